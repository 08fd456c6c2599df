#include <gtest/gtest.h>

#include "Form1Design.h"
#include "ProportionalLayout.h"

namespace mirvalde {
namespace {

ProportionalLayout DesignedLayout(double width, double height) {
    ProportionalLayout layout;
    for (const ControlDesign& control : Form1Design()) layout.Add(control.name, control.place);
    layout.SetPreviousSize(width, height);
    return layout;
}

TEST(ProportionalLayoutTest, AWiderWindowScalesEveryControlFramesIncluded) {
    ProportionalLayout layout = DesignedLayout(9000, 5400);
    ASSERT_TRUE(layout.Form_Resize(13500, 5400, false));
    const TwipRect quit = layout.Places().at("Btquitter");
    EXPECT_DOUBLE_EQ(quit.left, 11340);
    EXPECT_DOUBLE_EQ(quit.width, 1822.5);
    EXPECT_DOUBLE_EQ(quit.top, 3600);
    EXPECT_DOUBLE_EQ(layout.Places().at("Option1(4)").left, 9180);  // inside Frame1

    // Back to the size before, from the size it remembered.
    ASSERT_TRUE(layout.Form_Resize(9000, 5400, false));
    EXPECT_NEAR(layout.Places().at("Btquitter").left, 7560, 0.01);
    EXPECT_NEAR(layout.Places().at("Option1(4)").left, 6120, 0.01);
}

TEST(ProportionalLayoutTest, MinimisingChangesNothingAndTheRestoreThatFollowsNeither) {
    ProportionalLayout layout = DesignedLayout(8910, 5235);
    EXPECT_FALSE(layout.Form_Resize(2400, 300, true));
    EXPECT_FALSE(layout.Form_Resize(8910, 5235, false));
    EXPECT_DOUBLE_EQ(layout.Places().at("Regle").left, 1223);
}

}  // namespace
}  // namespace mirvalde
