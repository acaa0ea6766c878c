#include "support/Operator.h"

#include "shell/DIO.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

using vorn::DIO;

namespace
{

class DIOTest : public ::testing::Test
{
protected:
    DIO point_;
    QSignalSpy clicks_{&point_, &DIO::Click};
    QSignalSpy labels_{&point_, &DIO::LabelClick};

    void SetUp() override
    {
        point_.SetCaption(QStringLiteral("DO  &3"));
        point_.resize(120, 24);
        point_.show();
    }

    QPoint Lamp() const { return {14, point_.height() / 2}; }
    /// On the last letter of the caption.
    QPoint Label() const { return {point_.sizeHint().width() - 12, point_.height() / 2}; }
    /// On the control, right of its caption.
    QPoint Beside() const { return {point_.width() - 5, point_.height() / 2}; }

    void Click(QPoint place)
    {
        QTest::mouseClick(&point_, Qt::LeftButton, Qt::NoModifier, place);
        QCoreApplication::processEvents();
    }

    /// Pixels of the lamp that are coloured rather than grey.
    int ColouredPixels()
    {
        const QImage image = point_.grab().toImage();
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width() / 3; ++x)
                count += image.pixelColor(x, y).saturation() > 100;
        }
        return count;
    }
};

} // namespace

TEST_F(DIOTest, StartsClearAtTheEdge)
{
    const DIO fresh;
    EXPECT_FALSE(fresh.value());
    EXPECT_FALSE(fresh.ac());
    EXPECT_TRUE(fresh.Caption().isEmpty());
}

TEST_F(DIOTest, AClickOnTheLampTogglesAndThenTellsThePage)
{
    bool valueAtEvent = false;
    QObject::connect(&point_, &DIO::Click, &point_, [&] { valueAtEvent = point_.value(); });
    Click(Lamp());
    EXPECT_TRUE(point_.value());
    EXPECT_TRUE(valueAtEvent);
    EXPECT_EQ(clicks_.count(), 1);
    Click(Lamp());
    EXPECT_FALSE(point_.value());
    EXPECT_EQ(clicks_.count(), 2);
}

TEST_F(DIOTest, TheSpaceKeyToggles)
{
    QTest::keyClick(&point_, Qt::Key_Space);
    QCoreApplication::processEvents();
    EXPECT_TRUE(point_.value());
    EXPECT_EQ(clicks_.count(), 1);
}

TEST_F(DIOTest, ADoubleClickOnTheCaptionToggles)
{
    QTest::mouseDClick(&point_, Qt::LeftButton, Qt::NoModifier, Label());
    QCoreApplication::processEvents();
    EXPECT_TRUE(point_.value());
    EXPECT_EQ(clicks_.count(), 1);
}

TEST_F(DIOTest, SettingTheValueRaisesNoEvent)
{
    point_.SetValue(true);
    point_.setProperty("value", false);
    point_.setProperty("value", true);
    EXPECT_TRUE(point_.value());
    EXPECT_EQ(clicks_.count(), 0);
}

TEST_F(DIOTest, EachPropertyTellsThatItChanged)
{
    QSignalSpy changes(&point_, &DIO::PropertyChanged);
    point_.SetValue(true);
    point_.SetCaption(QStringLiteral("DI  3"));
    point_.SetEnabled(false);
    point_.SetAc(true);
    EXPECT_EQ(changes.count(), 4);
}

TEST_F(DIOTest, ALabelClickOnAnInputDisablesIt)
{
    point_.SetCaption(QStringLiteral("DI  3"));
    Click(Label());
    EXPECT_FALSE(point_.isEnabled());
    EXPECT_EQ(labels_.count(), 1);
    Click(Lamp());
    EXPECT_FALSE(point_.value()) << "it can't be toggled any more";
    EXPECT_EQ(clicks_.count(), 0);
}

TEST_F(DIOTest, ALabelClickOnAnOutputLeavesItEnabled)
{
    Click(Label());
    EXPECT_TRUE(point_.isEnabled());
    EXPECT_EQ(labels_.count(), 1);
    EXPECT_EQ(clicks_.count(), 0);
}

TEST_F(DIOTest, ALabelClickEnablesAnOutputThatWasDisabledAsAnInput)
{
    point_.SetCaption(QStringLiteral("DI  3"));
    Click(Label());
    Click(Label());
    EXPECT_FALSE(point_.isEnabled()) << "an input stays disabled";
    point_.SetCaption(QStringLiteral("DO &5"));
    Click(Lamp());
    EXPECT_EQ(clicks_.count(), 0) << "only its label enables it";
    Click(Label());
    EXPECT_TRUE(point_.isEnabled());
    EXPECT_EQ(labels_.count(), 3);
    Click(Lamp());
    EXPECT_TRUE(point_.value());
    EXPECT_EQ(clicks_.count(), 1);
}

TEST_F(DIOTest, AClickInADisabledWindowIsNone)
{
    QWidget window;
    DIO point(&window);
    point.SetCaption(QStringLiteral("DO &5"));
    point.resize(point.sizeHint());
    window.show();
    QSignalSpy labels(&point, &DIO::LabelClick);
    point.SetEnabled(false);
    window.setEnabled(false);
    QTest::mouseClick(&point, Qt::LeftButton, Qt::NoModifier, {point.width() - 12, point.height() / 2});
    QCoreApplication::processEvents();
    EXPECT_EQ(labels.count(), 0);
    window.setEnabled(true);
    EXPECT_FALSE(point.isEnabled());
}

TEST_F(DIOTest, AFaultyPointBehavesLikeAnInput)
{
    point_.SetCaption(QStringLiteral("XX  3"));
    Click(Label());
    EXPECT_FALSE(point_.isEnabled());
}

TEST_F(DIOTest, TheAcceleratorOfAnOutputToggles)
{
    QApplication::setActiveWindow(&point_);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&point_));
    QTest::keyClick(&point_, Qt::Key_3, Qt::AltModifier);
    QCoreApplication::processEvents();
    EXPECT_TRUE(point_.value());
}

TEST_F(DIOTest, AnAcceleratorOfTwoOutputsOnlyMovesTheFocus)
{
    QWidget window;
    DIO first(&window);
    DIO second(&window);
    for (DIO *point : {&first, &second})
        point->SetCaption(QStringLiteral("DO &0"));
    QApplication::setActiveWindow(&window);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    for (int i = 0; i < 2; ++i) {
        QTest::keyClick(&window, Qt::Key_0, Qt::AltModifier);
        QCoreApplication::processEvents();
        EXPECT_TRUE(first.hasFocus() || second.hasFocus());
        EXPECT_FALSE(first.value() || second.value());
    }
}

TEST_F(DIOTest, AClickRightOfTheCaptionToggles)
{
    Click(Beside());
    EXPECT_TRUE(point_.value());
    EXPECT_EQ(clicks_.count(), 1);
    EXPECT_EQ(labels_.count(), 0);
    point_.SetCaption(QStringLiteral("DI  3"));
    Click(Beside());
    EXPECT_TRUE(point_.isEnabled()) << "only a click on the label disables";
}

TEST_F(DIOTest, SetAndClearDifferInShapeAndColour)
{
    EXPECT_EQ(ColouredPixels(), 0) << "a hollow ring";
    point_.SetValue(true);
    EXPECT_GT(ColouredPixels(), 20) << "a filled disc";
}

TEST_F(DIOTest, AFaultyPointIsCrossed)
{
    const QImage plain = point_.grab().toImage();
    point_.SetCaption(QStringLiteral("XX  &3"));
    EXPECT_NE(point_.grab(QRect(0, 0, 26, 24)).toImage(), plain.copy(0, 0, 26, 24));
}

TEST_F(DIOTest, GrowsWithItsFont)
{
    const QSize before = point_.sizeHint();
    QFont font = point_.font();
    font.setPointSizeF(font.pointSizeF() * 1.5);
    point_.setFont(font);
    EXPECT_GT(point_.sizeHint().width(), before.width());
    EXPECT_GT(point_.sizeHint().height(), before.height());
}

TEST_F(DIOTest, TellsAssistiveTechnologyItsCaption)
{
    EXPECT_EQ(point_.accessibleName(), QStringLiteral("DO 3"));
}

TEST_F(DIOTest, RaisesAnEventAtEachResize)
{
    QSignalSpy resizes(&point_, &DIO::Resize);
    point_.resize(200, 30);
    EXPECT_EQ(resizes.count(), 1);
}

TEST(DIOInAWindow, RemembersWhatIsSaidWhileItsWindowIsDisabled)
{
    QWidget window;
    DIO point(&window);
    window.setEnabled(false);
    point.SetEnabled(false);
    window.setEnabled(true);
    EXPECT_FALSE(point.isEnabled());
    window.setEnabled(false);
    point.SetEnabled(true);
    window.setEnabled(true);
    EXPECT_TRUE(point.isEnabled());
}
