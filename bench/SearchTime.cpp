// A search of addresses where nobody is.

#include "Figures.h"
#include "Measures.h"
#include "Stand.h"

void MeasureSearch(Stand &stand, Figures &figures)
{
    constexpr int TimeOut = 80;
    constexpr double Waits = 512; // each address is asked with and without a checksum
    stand.ChoosePort(Stand::SilentPort, Baud9600, TimeOut);
    const double bare = Waits * TimeOut;
    const double whole = stand.Search(0).count();
    figures.Add("search of 256 silent addresses", whole / bare, 1.02, "x",
                Decimal(whole / 1000, 2) + " s against 512 time-outs of " + std::to_string(TimeOut) + " ms");
}
