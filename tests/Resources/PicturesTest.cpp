// The drawings that the program brings along can be drawn, at every size at which they are shown.
#include "Models/AppTemplate.h"
#include "Platform/Linux/LinuxResources.h"

#include <QDir>
#include <QImageReader>

#include <gtest/gtest.h>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;

const QString resourcesFolder = QStringLiteral(WRAPIO_RESOURCES);

/// How many of the pixels are not (nearly) transparent, from 0 to 1.
double coverage(const QImage& image) {
    constexpr int faintest = 16;
    qint64 inked = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            inked += qAlpha(image.pixel(x, y)) > faintest;
    }
    return double(inked) / (double(image.width()) * image.height());
}

QImage drawn(const QString& file, int edge) {
    QImageReader reader(file);
    reader.setScaledSize(QSize(edge, edge));
    return reader.read();
}

QStringList drawings(const QString& folder) {
    const QDir place(resourcesFolder + u'/' + folder);
    QStringList files;
    for (const QString& name : place.entryList({u"*.svg"_s}, QDir::Files))
        files << place.filePath(name);
    return files;
}

std::vector<AppTemplate> allTemplates() {
    std::vector<AppTemplate> all = AppTemplate::popular();
    all.insert(all.end(), AppTemplate::devTemplates().begin(), AppTemplate::devTemplates().end());
    return all;
}

TEST(PicturesOfTemplates, are_found_and_fill_their_tile) {
    const LinuxResources resources(resourcesFolder);
    ASSERT_FALSE(allTemplates().empty());
    for (const AppTemplate& quickStart : allTemplates()) {
        const auto image = resources.image(quickStart.iconAssetName);
        ASSERT_TRUE(image.has_value()) << quickStart.iconAssetName.toStdString();
        EXPECT_EQ(image->size(), QSize(512, 512));
        EXPECT_GT(coverage(*image), 0.5) << quickStart.iconAssetName.toStdString();
    }
}

TEST(PicturesOfTemplates, have_a_symbol_to_fall_back_to) {
    for (const AppTemplate& quickStart : allTemplates()) {
        const QString file = u"%1/symbols/%2.svg"_s.arg(resourcesFolder, quickStart.fallbackIcon);
        EXPECT_GT(coverage(drawn(file, 24)), 0.05) << quickStart.fallbackIcon.toStdString();
    }
}

TEST(PicturesOfSymbols, show_ink_at_the_smallest_and_the_largest_size) {
    const QStringList symbols = drawings(u"symbols"_s);
    ASSERT_GT(symbols.size(), 20);
    for (const QString& symbol : symbols) {
        for (const int edge : {16, 24, 96}) {
            const QImage image = drawn(symbol, edge);
            ASSERT_EQ(image.size(), QSize(edge, edge)) << symbol.toStdString();
            EXPECT_GT(coverage(image), 0.03) << symbol.toStdString() << " at " << edge;
            EXPECT_LT(coverage(image), 0.9) << symbol.toStdString() << " at " << edge;
        }
    }
}

TEST(PicturesOfTheProgram, can_be_drawn) {
    const LinuxResources resources(resourcesFolder);
    for (const QString& name : {u"wrapio"_s, u"runner"_s, u"MenuBarIcon"_s}) {
        const auto image = resources.image(name);
        ASSERT_TRUE(image.has_value()) << name.toStdString();
        EXPECT_GT(coverage(*image), 0.1) << name.toStdString();
    }
}

}  // namespace
}  // namespace wrapio
