#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "study/deck_record_reader.h"

namespace tessary {

/// How the records of a deck file are written.
struct DeckLayout {
    char separator = '\t';
    bool html = false;      ///< fields hold tags and entities
    std::size_t front = 0;  ///< index of the field, as the next two
    std::size_t back = 0;
    std::optional<std::size_t> kind;
};

/// Reads the "#" lines a file begins with, and guesses from its first record what they do not tell. Leaves the reader
/// at that record.
[[nodiscard]] DeckLayout readDeckLayout(DeckRecordReader& reader);

/// A line that is no record: blank, or with "#" in front.
[[nodiscard]] bool isSkippedLine(std::string_view line);

}  // namespace tessary
