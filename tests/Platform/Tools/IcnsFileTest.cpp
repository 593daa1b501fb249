#include "Platform/Linux/IcnsFile.h"

#include "Fakes/PrintQt.h"
#include "Platform/Imaging.h"
#include "Platform/Tools/ToolTestSupport.h"

#include <QDir>
#include <QFile>

#include <random>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

class IcnsFileTest : public testing::Test {
protected:
    void SetUp() override { writeIconset(m_set); }

    [[nodiscard]] QByteArray container() const {
        const auto icns = icnsFromIconset(m_set);
        EXPECT_TRUE(icns.has_value()) << icns.error().message.toStdString();
        return icns.value_or(QByteArray());
    }

    ScratchFolder m_scratch;
    QString m_set = m_scratch.path(u"AppIcon.iconset"_s);
};

TEST_F(IcnsFileTest, ThePicturesComeBackBySize) {
    const auto pictures = pngPicturesOfIcns(container());
    ASSERT_TRUE(pictures.has_value());
    std::vector<int> edges;
    for (const auto& [edge, png] : *pictures) {
        edges.push_back(edge);
        EXPECT_EQ(squarePngEdge(png), edge);
    }
    EXPECT_EQ(edges, (std::vector{16, 32, 64, 128, 256, 512, 1024}));
    EXPECT_EQ(pictures->at(64), readFile(m_set + u"/icon_32x32@2x.png"_s));
}

TEST_F(IcnsFileTest, TheContainerHoldsTheTenPicturesUnderTheirTypes) {
    writeFile(m_scratch.path(u"a.icns"_s), container());
    EXPECT_EQ(outputOf(u"/usr/bin/python3"_s, {u"-c"_s, uR"(
import struct, sys
data = open(sys.argv[1], "rb").read()
assert struct.unpack(">4sI", data[:8]) == (b"icns", len(data))
offset, found = 8, []
while offset < len(data):
    kind, length = struct.unpack(">4sI", data[offset:offset + 8])
    png = data[offset + 8:offset + length]
    assert png.startswith(b"\x89PNG\r\n\x1a\n")
    found.append("%s=%d" % (kind.decode(), struct.unpack(">I", png[16:20])[0]))
    offset += length
print(*found))"_s,
                                               m_scratch.path(u"a.icns"_s)}),
              "icp4=16 ic11=32 icp5=32 ic12=64 ic07=128 ic13=256 ic08=256 ic14=512 ic09=512 ic10=1024\n");
}

TEST_F(IcnsFileTest, OtherReadersFindThePictures) {
    writeFile(m_scratch.path(u"a.icns"_s), container());
    ASSERT_TRUE(QDir().mkpath(m_scratch.path(u"out"_s)));
    outputOf(u"/usr/bin/icns2png"_s, {u"-x"_s, u"-o"_s, m_scratch.path(u"out"_s), m_scratch.path(u"a.icns"_s)});
    const QString files = QDir(m_scratch.path(u"out"_s)).entryList(QDir::Files).join(u' ');
    // It knows only these of the types by name.
    for (const int edge : {256, 512, 1024})
        EXPECT_TRUE(files.contains(u"%1x%1"_s.arg(edge))) << files.toStdString();
    EXPECT_TRUE(outputOf(u"/usr/bin/icns2png"_s, {u"-l"_s, m_scratch.path(u"a.icns"_s)}).contains("10 elements total"));
    const auto image = decodeImage(container());
    ASSERT_TRUE(image.has_value());
    EXPECT_EQ(image->size(), QSize(1024, 1024));
}

TEST_F(IcnsFileTest, AMissingPictureIsNamed) {
    QFile::remove(m_set + u"/icon_128x128@2x.png"_s);
    const auto icns = icnsFromIconset(m_set);
    ASSERT_FALSE(icns.has_value());
    EXPECT_EQ(icns.error().message, m_set + u"/icon_128x128@2x.png: the picture is missing"_s);
}

TEST_F(IcnsFileTest, APictureOfTheWrongSizeIsNamed) {
    writeFile(m_set + u"/icon_16x16.png"_s, squarePng(17));
    const auto icns = icnsFromIconset(m_set);
    ASSERT_FALSE(icns.has_value());
    EXPECT_EQ(icns.error().message, m_set + u"/icon_16x16.png: is 17 pixels wide instead of 16"_s);
}

TEST_F(IcnsFileTest, WhatIsNoPngIsRefused) {
    const QByteArray png = squarePng(16);
    for (const QByteArray& bytes : {QByteArray(), QByteArray("GIF89a"), png.chopped(1), png.first(24), "x" + png}) {
        writeFile(m_set + u"/icon_16x16.png"_s, bytes);
        const auto icns = icnsFromIconset(m_set);
        ASSERT_FALSE(icns.has_value());
        EXPECT_EQ(icns.error().message, m_set + u"/icon_16x16.png: not a square PNG picture"_s);
    }
}

TEST_F(IcnsFileTest, OtherFilesOfTheSetDoNotMatter) {
    const QByteArray before = container();
    writeFile(m_set + u"/notes.txt"_s, "x");
    EXPECT_EQ(container(), before);
}

TEST_F(IcnsFileTest, AContainerWithOtherEntriesGivesItsPngPictures) {
    const QByteArray png = squarePng(32);
    QByteArray bytes("icns\0\0\0\0TOC \0\0\0\x0C"
                     "abcdICN#\0\0\0\x08ic11\0\0\0\0",
                     36);
    bytes[35] = static_cast<char>(8 + png.size());
    ASSERT_LT(8 + png.size(), 256);
    bytes += png;
    bytes[6] = static_cast<char>(bytes.size() >> 8);
    bytes[7] = static_cast<char>(bytes.size() & 0xFF);
    const auto pictures = pngPicturesOfIcns(bytes);
    ASSERT_TRUE(pictures.has_value());
    EXPECT_EQ(pictures->size(), 1U);
    EXPECT_EQ(pictures->at(32), png);
}

TEST_F(IcnsFileTest, EveryTruncationOfAContainerIsRefused) {
    const QByteArray icns = container();
    for (qsizetype size = 0; size < icns.size(); size += size < 64 ? 1 : 97)
        EXPECT_FALSE(pngPicturesOfIcns(icns.first(size)).has_value()) << size;
}

TEST_F(IcnsFileTest, BrokenLengthsAreRefused) {
    const QByteArray icns = container();
    for (const QByteArray& length :
         {QByteArray("\0\0\0\0", 4), QByteArray("\0\0\0\x07", 4), QByteArray("\xFF\xFF\xFF\xFF")}) {
        QByteArray broken = icns;
        broken.replace(12, 4, length);
        EXPECT_FALSE(pngPicturesOfIcns(broken).has_value());
    }
    QByteArray tooLong = icns;
    tooLong.replace(4, 4, "\xFF\xFF\xFF\xFF");
    EXPECT_FALSE(pngPicturesOfIcns(tooLong).has_value());
}

TEST_F(IcnsFileTest, AnyDamageLeavesOnlyWholePictures) {
    const QByteArray icns = container();
    std::mt19937 random(1);
    for (int i = 0; i < 300; ++i) {
        QByteArray broken = icns;
        for (int k = 0; k < 8; ++k)
            broken[static_cast<qsizetype>(random() % static_cast<unsigned>(k < 4 ? broken.size() : 64))] =
                static_cast<char>(random());
        const auto pictures = pngPicturesOfIcns(broken);
        if (!pictures)
            continue;
        for (const auto& [edge, png] : *pictures)
            EXPECT_EQ(squarePngEdge(png), edge);
    }
}

}  // namespace

}  // namespace wrapio
