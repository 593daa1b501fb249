#include "Platform/Tools/ToolTestSupport.h"

#include "Platform/Darwin/ProcessToolRunner.h"
#include "Platform/Linux/IcnsFile.h"
#include "Platform/PropertyList.h"

#include <QBuffer>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QImage>

namespace wrapio {

using namespace Qt::StringLiterals;

void writeFile(const QString& path, const QByteArray& bytes) {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size());
}

void writeExecutable(const QString& path, const QByteArray& bytes) {
    writeFile(path, bytes);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

std::map<QString, QByteArray> contentsOf(const QString& folder) {
    std::map<QString, QByteArray> contents;
    QDirIterator i(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                   QDirIterator::Subdirectories);
    while (i.hasNext()) {
        const QFileInfo entry(i.next());
        const QString path = entry.filePath().mid(folder.size() + 1);
        if (entry.isDir() && !entry.isSymLink())
            contents[path + u'/'] = {};
        else
            contents[path] = readFile(entry.filePath());
    }
    return contents;
}

QByteArray squarePng(int edge) {
    QImage image(edge, edge, QImage::Format_ARGB32);
    image.fill(QColor(30, 120, 200));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

void writeIconset(const QString& folder) {
    for (const int size : {16, 32, 128, 256, 512}) {
        writeFile(u"%1/icon_%2x%2.png"_s.arg(folder).arg(size), squarePng(size));
        writeFile(u"%1/icon_%2x%2@2x.png"_s.arg(folder).arg(size), squarePng(2 * size));
    }
}

void TestBundle::write() const {
    PropertyList list;
    list.setText("CFBundleIdentifier", identifier);
    list.setText("CFBundleDisplayName", name);
    list.setText("CFBundleExecutable", u"WrapioRunner"_s);
    list.setUrlType(identifier, scheme);
    writeFile(path + u"/Contents/Info.plist"_s, list.toXml().value());
    writeExecutable(path + u"/Contents/Linux/WrapioRunner"_s, executable);
    if (!withIcon)
        return;
    const ScratchFolder scratch;
    writeIconset(scratch.path(u"AppIcon.iconset"_s));
    writeFile(path + u"/Contents/Resources/AppIcon.icns"_s,
              icnsFromIconset(scratch.path(u"AppIcon.iconset"_s)).value());
}

ToolResult runProgram(const QString& path, const QStringList& arguments) {
    const auto result = ProcessToolRunner().run(path, arguments);
    EXPECT_TRUE(result.has_value()) << path.toStdString();
    return result.value_or(ToolResult{-1, {}, {}});
}

QByteArray outputOf(const QString& path, const QStringList& arguments) {
    const ToolResult result = runProgram(path, arguments);
    EXPECT_EQ(result.status, 0) << path.toStdString() << ": " << result.standardError.toStdString()
                                << result.standardOutput.toStdString();
    return result.standardOutput;
}

}  // namespace wrapio
