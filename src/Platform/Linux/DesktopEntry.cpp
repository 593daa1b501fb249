#include "Platform/Linux/DesktopEntry.h"

#include "Utilities/CharacterClasses.h"

#include <QList>
#include <QStringList>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView bundleKey = "X-Wrapio-Bundle=";

/// How a value of the file spells `text`.
QString escaped(const QString& text) {
    QString value;
    for (const QChar c : text) {
        if (c == u'\\')
            value += u"\\\\"_s;
        else if (c == u'\n')
            value += u"\\n"_s;
        else if (c == u'\r')
            value += u"\\r"_s;
        else if (c == u'\t')
            value += u"\\t"_s;
        else if (c == u' ' && value.isEmpty())
            value += u"\\s"_s;
        else
            value += c;
    }
    return value;
}

QChar unescaped(QChar c) {
    switch (c.unicode()) {
    case u's':
        return u' ';
    case u'n':
        return u'\n';
    case u'r':
        return u'\r';
    case u't':
        return u'\t';
    default:  // a backslash, or an escape that nobody defined
        return c;
    }
}

QString unescapedValue(const QString& value) {
    QString text;
    for (qsizetype i = 0; i < value.size(); ++i) {
        const bool escapes = value[i] == u'\\' && i + 1 < value.size();
        text += escapes ? unescaped(value[++i]) : value[i];
    }
    return text;
}

/// One argument of a command line, as its parser undoes it. The value's own escaping comes on top.
QString quoted(const QString& argument) {
    QString text = u"\""_s;
    for (const QChar c : argument) {
        if (c == u'"' || c == u'`' || c == u'$' || c == u'\\')
            text += u'\\';
        text += c;
        if (c == u'%')
            text += u'%';
    }
    return text + u'"';
}

/// GLib looks for the program before it turns "%%" into "%", and drops the entry when it finds none. With a percent
/// sign in the path the shell, which is always found, starts it.
QString program(const QString& path) {
    if (!path.contains(u'%'))
        return quoted(path);
    return u"/bin/sh -c "_s + quoted(u"exec \"$0\" \"$@\""_s) + u' ' + quoted(path);
}

QString mimeTypes(const std::vector<QString>& schemes) {
    QString types;
    for (const QString& scheme : schemes)
        types += u"x-scheme-handler/"_s + scheme + u';';
    return types;
}

}  // namespace

QString withoutControls(const QString& text) {
    QList<uint> kept = text.toUcs4();
    kept.removeIf([](uint c) { return isControl(c) || isNewline(c); });
    return QString::fromUcs4(reinterpret_cast<const char32_t*>(kept.constData()), kept.size()).trimmed();
}

QByteArray DesktopEntry::toBytes() const {
    QStringList lines{
        u"[Desktop Entry]"_s,
        u"Type=Application"_s,
        u"Name="_s + escaped(withoutControls(name)),
        u"Comment=A website as an app, made with Wrapio"_s,
        u"Exec="_s + escaped(program(executable) + u" %u"_s),
        u"TryExec="_s + escaped(executable),
        u"Icon="_s + id,
        u"StartupWMClass="_s + id,
        u"StartupNotify=true"_s,
        u"Terminal=false"_s,
        u"Categories=Network;"_s,
    };
    if (!schemes.empty())
        lines << u"MimeType="_s + mimeTypes(schemes);
    lines << QString::fromLatin1(bundleKey) + escaped(bundlePath);
    if (editProgram && editArgument) {
        lines << u"Actions=edit;"_s << QString() << u"[Desktop Action edit]"_s << u"Name=Edit in Wrapio"_s
              << u"Exec="_s + escaped(program(*editProgram) + u" edit "_s + quoted(*editArgument));
    }
    return (lines.join(u'\n') + u'\n').toUtf8();
}

std::optional<QString> bundlePathOfDesktopEntry(const QByteArray& bytes) {
    bool inEntry = false;
    for (const QByteArray& line : bytes.split('\n')) {
        if (line.startsWith('['))
            inEntry = line.trimmed() == "[Desktop Entry]";
        else if (inEntry && line.startsWith(bundleKey))
            return unescapedValue(QString::fromUtf8(line.sliced(bundleKey.size())));
    }
    return std::nullopt;
}

}  // namespace wrapio
