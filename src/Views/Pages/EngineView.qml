// The engine's view. The one file that knows the engine.
import QtQuick
import QtWebEngine
import Wrapio.Design
import Wrapio.Pages

WebEngineView {
    id: root

    required property EnginePage page
    /// Under which name cookies and storage are kept.
    property string storageName: "Browser"
    property bool isFullScreenPage: false

    /// Dialogs of pages that wait for their answer, by token.
    property var waitingDialogs: ({})
    property int lastToken: 0

    Component.onCompleted: page.setView(root)
    Component.onDestruction: page.setView(null)

    backgroundColor: Colors.background
    profile: WebEngineProfile {
        storageName: root.storageName
        // Once it has its name: it would make a store without one.
        Component.onCompleted: offTheRecord = false
    }
    settings.fullScreenSupportEnabled: page.isFullScreenEnabled
    // Troubles are told by the screen.
    settings.errorPageEnabled: false
    settings.pluginsEnabled: false
    Accessible.role: Accessible.WebDocument
    Accessible.name: title

    onUrlChanged: page.valueChanged(EnginePage.Value.Url)
    onCanGoBackChanged: page.valueChanged(EnginePage.Value.CanGoBack)
    onCanGoForwardChanged: page.valueChanged(EnginePage.Value.CanGoForward)
    onTitleChanged: page.valueChanged(EnginePage.Value.Title)
    onLoadProgressChanged: page.valueChanged(EnginePage.Value.EstimatedProgress)
    onLoadingChanged: info => page.loadChanged(info.status, info.errorCode, info.errorString)
    onNavigationRequested: request => {
        if (page.mayNavigate(request.url, request.navigationType))
            request.accept();
        else
            request.reject();
    }
    // Nothing is opened in a view of ours.
    onNewWindowRequested: request => page.newWindowRequested(request.requestedUrl)
    onRenderProcessTerminated: status => {
        if (status !== WebEngineView.NormalTerminationStatus)
            page.processTerminated();
    }
    onFullScreenRequested: request => {
        root.isFullScreenPage = request.toggleOn;
        request.accept();
    }
    onJavaScriptDialogRequested: request => {
        request.accepted = true;
        root.lastToken += 1;
        root.waitingDialogs[root.lastToken] = request;
        page.dialogRequested(root.lastToken, request.type, request.message, request.defaultText);
    }
    onFeaturePermissionRequested: (origin, feature) => grantFeaturePermission(origin, feature, false)
    onCertificateError: error => error.rejectCertificate()

    Binding {
        target: root.profile
        property: "httpUserAgent"
        value: root.page.customUserAgent
        when: root.page.customUserAgent !== ""
    }
    Connections {
        target: root.page

        function onDialogAnswered(token, accepted, text) {
            const request = root.waitingDialogs[token];
            delete root.waitingDialogs[token];
            if (!request)
                return;
            if (!accepted)
                request.dialogReject();
            else if (text === "")
                request.dialogAccept();
            else
                request.dialogAccept(text);
        }
    }
    // The gestures of this platform's pointers: the buttons beside a mouse's wheel.
    MouseArea {
        anchors.fill: parent
        enabled: root.page.allowsGestures
        acceptedButtons: Qt.BackButton | Qt.ForwardButton
        onClicked: event => event.button === Qt.BackButton ? root.goBack() : root.goForward()
    }
}
