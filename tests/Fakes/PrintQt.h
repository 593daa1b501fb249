// Lets GoogleTest show Qt's values in failure messages.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <ostream>

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QStringList& texts, std::ostream* out) {
    *out << '[';
    for (const QString& text : texts)
        *out << "\n  \"" << text.toStdString() << '"';
    *out << ']';
}
inline void PrintTo(const QByteArray& bytes, std::ostream* out) {
    *out << '"' << bytes.toStdString() << '"';
}
QT_END_NAMESPACE
