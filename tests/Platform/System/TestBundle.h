// Bundles with an application that does nothing but wait.
#pragma once

#include "Platform/PropertyList.h"

#include <QDir>
#include <QFile>
#include <QString>

#include <gtest/gtest.h>

namespace wrapio {

/// Makes a bundle at `path` whose executable is the test application.
inline void makeBundle(const QString& path, const QString& identifier = QStringLiteral("com.example.test")) {
    ASSERT_TRUE(QDir().mkpath(path + QStringLiteral("/Contents/Linux")));
    PropertyList info;
    info.setText("CFBundleExecutable", QStringLiteral("WrapioRunner"));
    info.setText("CFBundleIdentifier", identifier);
    QFile list(path + QStringLiteral("/Contents/Info.plist"));
    ASSERT_TRUE(list.open(QIODevice::WriteOnly));
    list.write(info.toXml().value_or(QByteArray()));
    ASSERT_TRUE(
        QFile::copy(QStringLiteral(WRAPIO_TEST_APPLICATION), path + QStringLiteral("/Contents/Linux/WrapioRunner")));
}

}  // namespace wrapio
