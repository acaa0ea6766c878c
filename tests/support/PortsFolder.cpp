#include "support/PortsFolder.h"

#include <cstdlib>
#include <stdexcept>
#include <vector>

PortsFolder::PortsFolder()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "vorn-test.XXXXXX").string();
    if (!::mkdtemp(pattern.data()))
        throw std::runtime_error("no folder for the test");
    root_ = pattern;
    std::filesystem::create_directories(Path());
    ::setenv("XDG_CONFIG_HOME", root_.c_str(), 1);
}

PortsFolder::~PortsFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
    ::unsetenv("XDG_CONFIG_HOME");
}
