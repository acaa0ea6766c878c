// Reads a sheet of a workbook and prints it as the program takes it. Workbooks that were damaged can be the
// end of the library that reads them, and so of the process: of this one. Usage: vornsheet FILE
// Standard|event

#include "logger/SheetText.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string_view>

int main(int argc, char **argv)
{
    if (argc != 3) {
        std::cerr << "Usage: vornsheet FILE Standard|event\n";
        return EXIT_FAILURE;
    }
    try {
        const bool event = std::string_view(argv[2]) == vorn::SheetNames[1];
        const auto kind = event ? vorn::RecordKind::Event : vorn::RecordKind::Standard;
        std::cout << vorn::SheetText(vorn::ReadRecordSheet(argv[1], kind)) << std::flush;
    } catch (const std::exception &error) {
        std::cerr << error.what() << std::flush;
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
