#include "RunnerCore/WindowState.h"

#include <gtest/gtest.h>

namespace wrapio {
namespace {

TEST(WindowState, ComesBackAsItWasWritten) {
    const WindowState state{1400, 900, true, WindowPosition{-1200, 40}, 1.33};
    EXPECT_EQ(parseWindowState(windowStateText(state)), state);
}

TEST(WindowState, WithoutAPlaceStaysWithoutOne) {
    const WindowState state{640, 480, false, std::nullopt, 0.5};
    EXPECT_EQ(parseWindowState(windowStateText(state)), state);
}

TEST(WindowState, NothingIsTheUsualState) {
    EXPECT_EQ(parseWindowState(""), WindowState{});
}

TEST(WindowState, ValuesOutOfRangeKeepTheUsualOnes) {
    const WindowState state = parseWindowState("width=1\nheight=999999\nx=99999999\ny=5\nzoom=100000\nmaximized=yes\n");
    EXPECT_EQ(state, WindowState{});
}

TEST(WindowState, DamagedLinesDoNotSpoilTheOthers) {
    const WindowState state =
        parseWindowState(std::string_view("width\n=\nheight=12x\n\0\xFF=\nwidth= 800 \nzoom=nan", 43));
    EXPECT_EQ(state.width, 800);
    EXPECT_EQ(state.height, WindowState{}.height);
    EXPECT_EQ(state.zoom, 1.0);
}

TEST(WindowState, APlaceNeedsBothOfItsNumbers) {
    EXPECT_FALSE(parseWindowState("x=10\n").position.has_value());
    EXPECT_EQ(parseWindowState("x=10\ny=-20\n").position, (WindowPosition{10, -20}));
}

}  // namespace
}  // namespace wrapio
