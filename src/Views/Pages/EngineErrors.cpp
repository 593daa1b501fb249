#include "Views/Pages/EngineErrors.h"

#include <array>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr int aborted = -3;
constexpr int timedOut = -7;
constexpr int connectionTimedOut = -118;
constexpr int firstCertificateError = -200;
constexpr int lastCertificateError = -299;

struct Description {
    int code;
    const char16_t* text;
};

constexpr std::array descriptions = {
    Description{-21, u"The network connection was lost."},
    Description{-100, u"The network connection was lost."},
    Description{-101, u"The network connection was lost."},
    Description{-102, u"Could not connect to the server."},
    Description{-104, u"Could not connect to the server."},
    Description{-105, u"A server with that name could not be found."},
    Description{-106, u"There is no connection to the Internet."},
    Description{-109, u"Could not connect to the server."},
    Description{-137, u"A server with that name could not be found."},
    Description{-310, u"The site redirects too many times."},
    Description{-324, u"The server sent no answer."},
};

QString descriptionOf(int code, const QString& text) {
    if (code <= firstCertificateError && code >= lastCertificateError)
        return u"A secure connection to the server could not be made."_s;
    for (const Description& each : descriptions) {
        if (each.code == code)
            return QString::fromUtf16(each.text);
    }
    return text.isEmpty() ? u"The page could not be loaded."_s : text;
}

}  // namespace

PageError engineError(int code, const QString& text) {
    if (code == aborted)
        return {urlErrorDomain, cancelledLoad, u"cancelled"_s};
    if (code == timedOut || code == connectionTimedOut)
        return {urlErrorDomain, timedOutLoad, u"The request timed out."_s};
    return {engineErrorDomain, code, descriptionOf(code, text)};
}

}  // namespace wrapio
