// Windows that remember what they were asked for.
#pragma once

#include "Session/ManagerInterface.h"

#include <QStringList>

namespace wrapio {

class FakeManagerInterface final : public ManagerInterface {
public:
    void start(bool background) override {
        log << (background ? QStringLiteral("start in background") : QStringLiteral("start"));
    }
    void activate(const QByteArray& token) override { log << QStringLiteral("activate ") + QString::fromUtf8(token); }
    void open(const QStringList& urls, const QByteArray& token) override {
        log << QStringLiteral("open ") + urls.join(u' ') + u' ' + QString::fromUtf8(token);
    }

    bool edit(const QUuid& app, const QByteArray& token) override {
        log << QStringLiteral("edit ") + app.toString(QUuid::WithoutBraces) + u' ' + QString::fromUtf8(token);
        return hasEditor;
    }

    bool hasEditor = true;
    QStringList log;
};

}  // namespace wrapio
