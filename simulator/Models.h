#pragma once

#include "Features.h"
#include "Ranges.h"

#include <array>
#include <span>
#include <string_view>

namespace vornsim
{

/// A model of module or slot card. A new model is a new row of the table.
struct ModelRow {
    std::string_view name;
    std::string_view slotCode; ///< by which a base unit reports the card; empty for all but cards
    int slots = 0;             ///< slots of a base unit
    int channels = 0;
    int inputs = 0;  ///< digital input points
    int outputs = 0; ///< digital output points
    std::span<const RangeRow> ranges = {};
    std::string_view range = {};       ///< type code of a new module; empty for models without range
    unsigned formatBits = 0;           ///< bits of the format byte that the model uses, checksum aside
    std::string_view dataFormats = {}; ///< the values that the two low bits of the format byte may have
    std::array<const Feature *, 8> features = {};

    bool IsCard() const { return !slotCode.empty(); }
};

/// The row of a stand-alone model or base unit, or null.
const ModelRow *FindModule(std::string_view name);
/// The row of a slot card, or null.
const ModelRow *FindCard(std::string_view name);

std::span<const ModelRow> AllModels();

} // namespace vornsim
