// The socket of an app that gives pictures of itself, for tests.
#pragma once

#include "Models/AppConfiguration.h"

#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>

#include <gtest/gtest.h>

#include <functional>

namespace wrapio {

/// Keeps what it is asked and answers with `reply`; with nothing while that is null.
class StandInSocket {
public:
    StandInSocket(const QString& runtimeFolder, const QUuid& record) {
        QDir().mkpath(runtimeFolder + QStringLiteral("/wrapio"));
        EXPECT_TRUE(m_server.listen(runtimeFolder + QStringLiteral("/wrapio/") + canonicalText(record) +
                                    QStringLiteral(".snapshot")))
            << m_server.errorString().toStdString();
        QObject::connect(&m_server, &QLocalServer::newConnection, &m_server, [this] { serve(); });
    }

    /// A picture of one colour.
    static QByteArray picture(QSize size, QColor color) {
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(color);
        const QString header =
            QStringLiteral("ok %1 %2 %3\n").arg(size.width()).arg(size.height()).arg(image.bytesPerLine());
        return header.toLatin1() + QByteArray(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes());
    }

    QByteArray asked;
    QByteArray reply;
    bool closesAfterwards = true;
    int connections = 0;

private:
    void serve() {
        QLocalSocket* const socket = m_server.nextPendingConnection();
        ++connections;
        QObject::connect(socket, &QLocalSocket::readyRead, socket, [this, socket] {
            asked += socket->readAll();
            if (!asked.endsWith('\n') || reply.isNull())
                return;
            socket->write(reply);
            if (closesAfterwards)
                socket->disconnectFromServer();
        });
    }

    QLocalServer m_server;
};

}  // namespace wrapio
