#include "RunnerCore/PageShims.h"

namespace wrapio {

std::string badgeShim() {
    return R"((() => {
const handler = window.webkit?.messageHandlers?.wrapioBadge;
if (!handler)
  return;
const define = (name, value) =>
  Object.defineProperty(Navigator.prototype, name, { value, configurable: true, writable: true });
define('setAppBadge', async function setAppBadge(contents) {
  if (contents === undefined)
    return void handler.postMessage('flag');
  const count = Number(contents);
  if (!Number.isFinite(count) || count < 0)
    throw new TypeError('The badge must be a number of zero or more');
  handler.postMessage(String(Math.min(Math.floor(count), 9999999)));
});
define('clearAppBadge', async function clearAppBadge() {
  handler.postMessage('clear');
});
})();
)";
}

std::string needShim() {
    return R"((() => {
const handler = window.webkit?.messageHandlers?.wrapioNeed;
if (!handler)
  return;
const refuse = need => {
  handler.postMessage(need);
  return Promise.reject(new DOMException('This engine does not support it', 'NotSupportedError'));
};
if (!('requestMediaKeySystemAccess' in navigator))
  Object.defineProperty(Navigator.prototype, 'requestMediaKeySystemAccess', {
    value: function requestMediaKeySystemAccess() { return refuse('drm'); }, configurable: true, writable: true });
const registration = window.ServiceWorkerRegistration?.prototype;
if (registration && !('pushManager' in registration))
  Object.defineProperty(registration, 'pushManager', { configurable: true, get: () => ({
    subscribe: () => refuse('push'),
    getSubscription: () => Promise.resolve(null),
    permissionState: () => Promise.resolve('denied'),
  }) });
if (!('RTCPeerConnection' in window)) {
  const listen = text => {
    if (String(text).includes('RTCPeerConnection'))
      handler.postMessage('calls');
  };
  addEventListener('error', event => listen(event.message));
  addEventListener('unhandledrejection', event => listen(event.reason?.message));
}
})();
)";
}

}  // namespace wrapio
