#pragma once

// Between the live run and the save document: taking the run down, and putting a document back in
// its place. A document comes from a file that anybody may have written, so it is checked and
// repaired here before the live run sees anything of it.

#include "base/AppScreen.h"
#include "persist/SaveDocument.h"
#include "sim/RunState.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Wirefall {

struct BoardSize {
    std::int32_t Width = 0;
    std::int32_t Height = 0;
};

/// The live run as a document; a new run if there is none yet.
SaveDocument MakeSaveDocument();

/// Makes the document the live run and shows the main menu with its first row selected. False, with
/// nothing changed, when the document describes no possible run. What is merely out of range is
/// clamped; tiles are brought into line with their type, and sources and sinks with their lists; a
/// RandomState that cannot be read is replaced by an engine seeded from Seed.
bool InstallSaveDocument(Navigation& navigation, const SaveDocument& document);

/// The endpoints of a document for a board of that size. False when one of them lies outside or
/// has no direction; `endpoints` is then of no use.
bool BuildEndpoints(const BoardSize& boardSize, const std::vector<DocumentEndpoint>& list,
                    std::vector<Endpoint>& endpoints);

/// The engine in the form of RandomState: the words as they stand, then the position.
std::string EngineText(const MersenneTwister& engine);

/// What EngineText gave. White space of any kind and length may stand before each number, anything
/// behind the last one. Nothing when a number is missing, is not one, or needs more than 32 bits.
std::optional<MersenneTwister> ParseEngineText(std::string_view text);

} // namespace Wirefall
