#pragma once

#include <string>
#include <vector>

/// The figures of one run, printed as a table.
class Figures final
{
public:
    /// A figure with a limit; `detail` says what it is made of.
    void Add(const std::string &what, double value, double limit, const std::string &unit,
             const std::string &detail);
    /// A figure without a limit, for comparison.
    void Note(const std::string &what, double value, const std::string &unit, const std::string &detail);

    void Print() const;

private:
    struct Row {
        std::string what, result, limit, verdict, detail;
    };
    void Tell(Row row);

    std::vector<Row> rows_;
};

/// A number with so many decimals.
std::string Decimal(double value, int decimals);
/// The middle one.
double Median(std::vector<double> values);
