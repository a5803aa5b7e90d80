#include "look/annotated_picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace dialwright::tools {
namespace {

bool Overlap(const Rectangle& one, const Rectangle& other) {
    return (std::max)(one.left, other.left) < (std::min)(one.right, other.right) &&
           (std::max)(one.top, other.top) < (std::min)(one.bottom, other.bottom);
}

/// Stripes, as text has them.
void Scribble(Picture& picture, const Rectangle& where) {
    for (int x = where.left; x < where.right; x += 2) {
        FillRectangle(picture, {.left = x, .top = where.top, .right = x + 1, .bottom = where.bottom}, 0xFFFFFF);
    }
}

TEST(MarksOf, NumbersAllAndShowsTheVisibleOnes) {
    std::vector<ControlInfo> controls(3);
    controls[0].visible = true;
    controls[2].visible = true;
    controls[2].kind = ControlKind::PushButton;
    controls[2].rectangle = {.left = 1, .top = 2, .right = 3, .bottom = 4};
    const std::vector<Mark> marks = MarksOf(controls);
    ASSERT_EQ(2U, marks.size());
    EXPECT_EQ(1, marks[0].number);
    EXPECT_FALSE(marks[0].acts);
    EXPECT_EQ(3, marks[1].number);
    EXPECT_TRUE(marks[1].acts);
    EXPECT_EQ(controls[2].rectangle, marks[1].place);
}

TEST(PlaceLabels, PutsANumberIntoTheCornerThatIsFree) {
    const Mark mark{.number = 8, .place = {.left = 20, .top = 20, .right = 80, .bottom = 60}, .acts = true};
    Picture picture(100, 100);
    const Rectangle usual = PlaceLabels(picture, {mark}, 1)[0];
    EXPECT_EQ(80, usual.right);
    EXPECT_EQ(20, usual.top);
    Scribble(picture, usual);
    const Rectangle other = PlaceLabels(picture, {mark}, 1)[0];
    EXPECT_FALSE(Overlap(usual, other));
    EXPECT_EQ(0, DetailIn(picture, other));
}

TEST(PlaceLabels, GoesBesideAControlThatIsFullOfText) {
    const Mark mark{.number = 12, .place = {.left = 30, .top = 30, .right = 70, .bottom = 50}, .acts = true};
    Picture picture(100, 100);
    Scribble(picture, mark.place);
    EXPECT_FALSE(Overlap(mark.place, PlaceLabels(picture, {mark}, 1)[0]));
}

TEST(PlaceLabels, HidesNoOtherNumberAndStaysInThePicture) {
    std::vector<Mark> marks;
    for (int number = 1; number <= 6; ++number) {
        marks.push_back({.number = number, .place = {.left = 0, .top = 0, .right = 60, .bottom = 40}, .acts = true});
    }
    const Picture picture(64, 44);
    const std::vector<Rectangle> labels = PlaceLabels(picture, {marks.begin(), marks.begin() + 4}, 1);
    for (std::size_t i = 0; i < labels.size(); ++i) {
        EXPECT_GE(labels[i].left, 0);
        EXPECT_LE(labels[i].right, picture.width);
        EXPECT_LE(labels[i].bottom, picture.height);
        for (std::size_t j = 0; j < i; ++j) EXPECT_FALSE(Overlap(labels[i], labels[j])) << i << " and " << j;
    }
    EXPECT_EQ(6U, PlaceLabels(picture, marks, 1).size());
}

TEST(Annotate, DrawsAroundTheControlAndNotIntoIt) {
    const Mark mark{.number = 1, .place = {.left = 20, .top = 20, .right = 80, .bottom = 60}, .acts = true};
    Picture picture(100, 100);
    Annotate(picture, {mark}, 1);
    EXPECT_NE(0U, picture.At(19, 40));
    EXPECT_EQ(0U, picture.At(20, 40));
    EXPECT_NE(0U, picture.At(80, 40));
    EXPECT_EQ(0U, picture.At(79, 40));
}

TEST(Annotate, TakesControlsOutsideThePicture) {
    Picture picture(10, 10);
    Annotate(picture, {{.number = 1, .place = {.left = 50, .top = -90, .right = 500, .bottom = -9}, .acts = false}}, 2);
    EXPECT_EQ(10, picture.height);
}

}  // namespace
}  // namespace dialwright::tools
