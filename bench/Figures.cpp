#include "Figures.h"

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <sstream>

namespace
{

std::string WithUnit(double value, const std::string &unit)
{
    const int decimals = value < 10 ? 3 : 1;
    return Decimal(value, decimals) + (unit == "x" ? "" : " ") + unit;
}

} // namespace

std::string Decimal(double value, int decimals)
{
    std::ostringstream text;
    text << std::fixed << std::setprecision(decimals) << value;
    return text.str();
}

double Median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void Figures::Add(const std::string &what, double value, double limit, const std::string &unit,
                  const std::string &detail)
{
    Tell({what, WithUnit(value, unit), "<= " + WithUnit(limit, unit), value <= limit ? "met" : "MISSED",
          detail});
}

void Figures::Note(const std::string &what, double value, const std::string &unit, const std::string &detail)
{
    Tell({what, WithUnit(value, unit), "", "", detail});
}

/// A run takes minutes, so each figure is also printed as soon as it is there.
void Figures::Tell(Row row)
{
    std::cerr << row.what << ": " << row.result << " " << row.limit << " " << row.verdict << std::endl;
    rows_.push_back(std::move(row));
}

void Figures::Print() const
{
    std::cout << "| What | Result | Limit | | Detail |\n|---|---|---|---|---|\n";
    for (const Row &row : rows_)
        std::cout << "| " << row.what << " | " << row.result << " | " << row.limit << " | " << row.verdict
                  << " | " << row.detail << " |\n";
}
