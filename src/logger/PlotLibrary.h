#pragma once

// The plotting library's header is written with the toolkit's keywords, which this project does without.
// NOLINTBEGIN(readability-identifier-naming)
#define signals Q_SIGNALS
#define slots Q_SLOTS
#define emit Q_EMIT
#define foreach Q_FOREACH
// NOLINTEND(readability-identifier-naming)
#include <qcustomplot.h>
#undef signals
#undef slots
#undef emit
#undef foreach
