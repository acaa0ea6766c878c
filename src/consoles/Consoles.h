#pragma once

#include <string>

namespace vorn
{

class FormMain;

/// The consoles of the models that have one instead of a page.
class Consoles final
{
public:
    explicit Consoles(FormMain &main) : main_(main) {}

    /// Shows the console of a model ("7254" is `Form7254`) and waits until it closes. `consoleBaud` is the
    /// line speed as digits, empty if none is chosen.
    void Show(const std::string &model, const std::string &consoleBaud);

private:
    FormMain &main_;
};

} // namespace vorn
