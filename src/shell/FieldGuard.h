#pragma once

#include "shell/FieldFilter.h"

#include <functional>

class QLineEdit;

namespace vorn
{

/// Lets an entry field take only what its rule lets through: a refused key is dropped with a beep, and what
/// typing would refuse doesn't come in by pasting, dropping or an input method either. `rule` is asked at
/// each entry, since it may depend on the page; `judged` gives the text that the rule looks at where that
/// isn't the field's own.
void GuardField(QLineEdit *field, std::function<FieldRule()> rule, std::function<std::string()> judged = {});
void GuardField(QLineEdit *field, FieldRule rule);

} // namespace vorn
