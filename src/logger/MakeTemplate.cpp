// Writes "Mem.ory", the empty workbook with titled columns. Usage: vornmemory FILE

#include "logger/RecordWorkbook.h"

#include <cstdlib>
#include <exception>
#include <iostream>

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::cerr << "Usage: vornmemory FILE\n";
        return EXIT_FAILURE;
    }
    try {
        vorn::WriteEmptyWorkbook(argv[1], vorn::OwnSheetTitles());
    } catch (const std::exception &error) {
        std::cerr << argv[1] << ": " << error.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
