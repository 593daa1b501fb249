#include "Design/Contrast.h"

#include "Design/Appearance.h"
#include "Design/ColorTools.h"

#include <QGuiApplication>
#include <QPalette>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

const QColor card = blended(QColor::fromRgbF(1, 1, 1, 0.1F), windowBackground());

/// An application whose desktop has labels of `color`.
class DesktopWithLabels {
public:
    explicit DesktopWithLabels(const QColor& color) {
        QPalette palette = QGuiApplication::palette();
        palette.setColor(QPalette::WindowText, color);
        QGuiApplication::setPalette(palette);
    }
    ~DesktopWithLabels() { QGuiApplication::setPalette(m_before); }
    DesktopWithLabels(const DesktopWithLabels&) = delete;
    DesktopWithLabels& operator=(const DesktopWithLabels&) = delete;

private:
    QPalette m_before = QGuiApplication::palette();
};

struct Application {
    int count = 0;
    QGuiApplication application{count, nullptr};
};

class AppearanceTest : public testing::TestWithParam<QColor> {
    Application m_application;
};

}  // namespace

TEST(ContrastRatio, is_21_between_black_and_white_and_1_between_equals) {
    EXPECT_NEAR(contrastRatio(Qt::black, Qt::white), 21, 0.01);
    EXPECT_NEAR(contrastRatio(Qt::white, Qt::black), 21, 0.01);
    EXPECT_NEAR(contrastRatio(Qt::red, Qt::red), 1, 0.0001);
}

TEST(Blended, is_the_mean_at_half_opacity) {
    EXPECT_NEAR(blended(QColor::fromRgbF(1, 1, 1, 0.5F), Qt::black).redF(), 0.5F, 0.01F);
}

TEST(LegibleLabel, keeps_a_label_that_can_be_read) {
    const QColor label = legibleLabel(QColor(240, 240, 250), 0.9, windowBackground());
    EXPECT_EQ(label.rgb(), QColor(240, 240, 250).rgb());
    EXPECT_NEAR(label.alphaF(), 0.9F, 0.01F);
}

TEST(LegibleLabel, takes_the_counterpart_of_a_dark_label_on_a_dark_window) {
    EXPECT_EQ(legibleLabel(Qt::black, 0.9, windowBackground()).rgb(), QColor(Qt::white).rgb());
}

TEST(LegibleLabel, raises_the_opacity_until_it_can_be_read) {
    const QColor label = legibleLabel(Qt::white, 0.1, windowBackground());
    EXPECT_GT(label.alphaF(), 0.3F);
    EXPECT_GE(contrastRatio(blended(label, windowBackground()), windowBackground()), legibleContrast);
}

TEST(LegibleLabel, can_be_read_whatever_the_system_says) {
    for (int lightness = 0; lightness < 256; lightness += 5) {
        const QColor label = legibleLabel(QColor::fromHsl(210, 120, lightness), 0.5, windowBackground());
        EXPECT_GE(contrastRatio(blended(label, windowBackground()), windowBackground()), legibleContrast) << lightness;
    }
}

TEST_P(AppearanceTest, gives_labels_that_can_be_read_on_the_window_and_on_cards) {
    const DesktopWithLabels desktop(GetParam());
    const Appearance appearance;
    for (const QColor& label : {appearance.label(), appearance.secondaryLabel(), appearance.tertiaryLabel()}) {
        EXPECT_GE(contrastRatio(blended(label, windowBackground()), windowBackground()), legibleContrast);
        EXPECT_GE(contrastRatio(blended(label, card), card), legibleContrast);
    }
}

TEST_P(AppearanceTest, ranks_the_labels) {
    const DesktopWithLabels desktop(GetParam());
    const Appearance appearance;
    EXPECT_GT(appearance.label().alphaF(), appearance.secondaryLabel().alphaF());
    EXPECT_GT(appearance.secondaryLabel().alphaF(), appearance.tertiaryLabel().alphaF());
}

TEST_P(AppearanceTest, tells_when_the_system_changes_its_colours) {
    const Appearance appearance;
    const QSignalSpy spy(&appearance, &Appearance::labelsChanged);
    const DesktopWithLabels desktop(GetParam());
    QCoreApplication::sendPostedEvents();
    EXPECT_GE(spy.count(), 1);
}

INSTANTIATE_TEST_SUITE_P(Desktops, AppearanceTest,
                         testing::Values(QColor(0, 0, 0), QColor(40, 44, 52), QColor(252, 252, 252),
                                         QColor(30, 60, 120)));

TEST(TextScale, is_that_of_the_desktops_font_within_limits) {
    EXPECT_DOUBLE_EQ(textScaleOf(-1), 1);
    EXPECT_DOUBLE_EQ(textScaleOf(9), 1);
    EXPECT_DOUBLE_EQ(textScaleOf(11), 1);
    EXPECT_DOUBLE_EQ(textScaleOf(15), 1.5);
    EXPECT_DOUBLE_EQ(textScaleOf(40), 2);
}

TEST(ColorTools, choose_the_label_that_is_easier_to_read) {
    const ColorTools tools;
    EXPECT_EQ(tools.labelOn(Qt::black), QColor(Qt::white));
    EXPECT_EQ(tools.labelOn(Qt::yellow), windowBackground());
}

TEST(ColorTools, make_tiles_on_which_their_letters_can_be_read) {
    const ColorTools tools;
    for (int number = 0; number < 200; ++number) {
        const QColor tile = tools.tileColor(u"App %1"_s.arg(number));
        EXPECT_GE(contrastRatio(tools.labelOn(tile), tile), legibleContrast) << tile.name().toStdString();
    }
}

}  // namespace wrapio
