#pragma once

#include <gtest/gtest.h>

#include <QFont>
#include <QPalette>

#include <iosfwd>
#include <string>

class QWidget;

/// What windows must look well in.
struct Look {
    const char *name;
    double scale; ///< of the font
    bool dark;
};
void PrintTo(const Look &look, std::ostream *out);
std::string NameOfLook(const ::testing::TestParamInfo<Look> &info);

inline constexpr Look Looks[] = {{"light", 1, false}, {"large", 1.5, false}, {"dark", 1, true}};

/// The application's font and palette for as long as it lives.
class AsSeen final
{
public:
    explicit AsSeen(const Look &look);
    ~AsSeen();
    AsSeen(const AsSeen &) = delete;
    AsSeen &operator=(const AsSeen &) = delete;

private:
    QFont font_;
    QPalette palette_;
};

/// Has all layouts take their final places.
void LayOut();

/// Names of the visible parts of a window that need more room than they have. Entries and lists scroll what
/// they hold, but a value that can only be read must be seen.
std::string PartsCutOff(const QWidget &window);

/// Leaves a picture of a window in the folder that VORN_PICTURES names, if it names one.
void TakePicture(QWidget &window, const Look &look, const std::string &name);
