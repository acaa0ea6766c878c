#pragma once

#include <string>

namespace vorn
{

class FormMain;
class Pages;

/// Fills the page of a node from the module itself, frame by frame.
class ModulePageLoad final
{
public:
    ModulePageLoad(FormMain &main, Pages &pages) : main_(main), pages_(pages) {}

    void LoadModulePage(const std::string &key);

private:
    FormMain &main_;
    Pages &pages_;
};

} // namespace vorn
