#pragma once

#include "protocol/ModelTable.h"

#include <string>
#include <vector>

/// What a row of the model table lacks, one text for each hole: the column, and where it is filled. Empty for
/// a row from which the whole program follows.
std::vector<std::string> Holes(const vorn::ModelRow &row);
