#include "Platform/DrawingGuard.h"
#include "Platform/Imaging.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

namespace wrapio {
namespace {

/// A drawing with this inside.
QByteArray svg(const QByteArray& content, const QByteArray& attributes = "viewBox='0 0 20 10'") {
    return "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' " + attributes + ">" +
           content + "</svg>";
}

const QByteArray square = "<rect width='20' height='10' fill='#00ff00'/>";

TEST(DrawingTest, IsRenderedWithALongerEdgeOf512Pixels) {
    const auto image = decodeImage(svg(square));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), QSize(512, 256));
    EXPECT_EQ(image->pixelColor(256, 128), QColor(0, 255, 0));
}

TEST(DrawingTest, IsRenderedSmallerWhenItIsLarger) {
    EXPECT_EQ(decodeImage(svg(square, "width='90000' height='45000'"))->size(), QSize(512, 256));
}

TEST(DrawingTest, ALineThatIsAllWidthStillHasAHeight) {
    EXPECT_EQ(decodeImage(svg(square, "viewBox='0 0 100000 1'"))->size(), QSize(512, 1));
}

TEST(DrawingTest, IsTransparentWhereNothingIsDrawn) {
    EXPECT_EQ(decodeImage(svg("<rect width='1' height='1'/>"))->pixelColor(500, 200).alpha(), 0);
}

TEST(DrawingTest, MayBeginWithADeclarationAndAComment) {
    EXPECT_TRUE(decodeImage("\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?><!-- an icon -->" + svg(square)));
}

TEST(DrawingTest, MayReferToItself) {
    EXPECT_TRUE(decodeImage(svg("<defs><linearGradient id='g'><stop offset='0' stop-color='red'/></linearGradient>"
                                "<circle id='c' r='2'/></defs><use xlink:href='#c' fill='url(#g)'/>"
                                "<rect width='4' height='4' style=\"fill:url( '#g' )\"/>")));
}

TEST(DrawingTest, MayLinkElsewhereSinceALinkLoadsNothing) {
    EXPECT_TRUE(decodeImage(svg("<a xlink:href='https://example.com/'>" + square + "</a>")));
}

TEST(DrawingTest, WithADocumentTypeIsRefused) {
    EXPECT_FALSE(
        decodeImage("<!DOCTYPE svg PUBLIC '-//W3C//DTD SVG 1.1//EN' 'http://127.0.0.1/svg11.dtd'>" + svg(square)));
    EXPECT_FALSE(decodeImage("<!DOCTYPE svg [<!ENTITY a 'aaaaaaaaaa'>]>" + svg("<desc>&a;</desc>" + square)));
}

TEST(DrawingTest, WithAnUndefinedEntityIsRefused) {
    EXPECT_FALSE(decodeImage(svg("<desc>&a;</desc>" + square)));
}

TEST(DrawingTest, ThatRefersToAnythingOutsideItselfIsRefused) {
    for (const QByteArray& content :
         {QByteArray("<image xlink:href='file:///etc/passwd' width='4' height='4'/>"),
          QByteArray("<image href='https://example.com/a.png' width='4' height='4'/>"),
          QByteArray("<image href='data:image/png;base64,iVBORw0KGgo=' width='4' height='4'/>"),
          QByteArray("<use xlink:href='other.svg#a'/>"), QByteArray("<use href=' http://example.com/a.svg#a'/>"),
          QByteArray("<rect fill='url(http://example.com/a.svg#g)'/>"),
          QByteArray("<rect style='fill: URL( \"http://example.com/a.svg#g\" )'/>"),
          QByteArray("<rect style='fill: u\\72l(http://example.com/a.svg#g)'/>"),
          QByteArray("<style>@import 'http://example.com/a.css';</style>"),
          QByteArray("<style><![CDATA[@font-face { src: url(http://example.com/a.ttf) }]]></style>")})
        EXPECT_FALSE(decodeImage(svg(content + square))) << content.toStdString();
}

TEST(DrawingTest, WithAStyleSheetOutsideIsRefused) {
    EXPECT_FALSE(decodeImage("<?xml-stylesheet href='http://example.com/a.css'?>" + svg(square)));
}

TEST(DrawingTest, WithReferencesThatMultiplyIsRefused) {
    QByteArray content = "<g id='l0'>" + square + "</g>";
    for (int level = 1; level <= 30; ++level) {
        const QByteArray use = "<use xlink:href='#l" + QByteArray::number(level - 1) + "'/>";
        content += "<g id='l" + QByteArray::number(level) + "'>" + use + use + "</g>";
    }
    EXPECT_FALSE(decodeImage(svg(content)));
}

TEST(DrawingTest, WithReferencesInACircleIsRefused) {
    EXPECT_FALSE(decodeImage(svg("<g id='a'><use xlink:href='#b'/></g><g id='b'><use xlink:href='#a'/></g>")));
    EXPECT_FALSE(decodeImage(svg("<g id='a'><use xlink:href='#a'/></g>")));
}

TEST(DrawingTest, OfTooManyElementsIsRefused) {
    EXPECT_FALSE(decodeImage(svg(QByteArray("<g/>").repeated(100'001))));
}

TEST(DrawingTest, NestedTooDeeplyIsRefused) {
    EXPECT_TRUE(decodeImage(svg(QByteArray("<g>").repeated(200) + square + QByteArray("</g>").repeated(200))));
    EXPECT_FALSE(decodeImage(svg(QByteArray("<g>").repeated(50'000) + square + QByteArray("</g>").repeated(50'000))));
}

TEST(DrawingTest, OfMoreThanFourMebibytesIsRefused) {
    const qsizetype rest = svg(square).size() + 7;
    EXPECT_TRUE(decodeImage(svg(square + "<!--" + QByteArray(largestDrawingBytes - rest, 'a') + "-->")));
    EXPECT_FALSE(decodeImage(svg(square + "<!--" + QByteArray(largestDrawingBytes - rest + 1, 'a') + "-->")));
}

TEST(DrawingTest, ThatIsCutOffOrOfAnotherKindIsRefused) {
    EXPECT_FALSE(decodeImage(svg(square).chopped(3)));
    EXPECT_FALSE(decodeImage("<html><body><svg/></body></html>"));
    EXPECT_FALSE(decodeImage("<svg xmlns='http://www.w3.org/2000/svg'/>"));
    EXPECT_FALSE(decodeImage("<"));
}

TEST(DrawingTest, WithTextIsRefusedWhereThereAreNoFonts) {
    const QByteArray drawing = svg("<text x='2' y='8'>W</text>" + square);
    EXPECT_FALSE(decodeImage(drawing));
    EXPECT_FALSE(isHarmlessDrawing(drawing, {.textsAllowed = false}));
    EXPECT_TRUE(isHarmlessDrawing(drawing, {.textsAllowed = true}));
    int count = 1;
    char name[] = "DrawingTest";
    char* arguments[] = {name, nullptr};
    const QGuiApplication application(count, arguments);
    EXPECT_TRUE(decodeImage(drawing));
}

}  // namespace
}  // namespace wrapio
