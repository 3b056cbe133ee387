#pragma once

#include <set>
#include <string>
#include <vector>

#include "ai/card_request.h"
#include "platform/text_services.h"

namespace tessary {

/// The fronts that a page has already, so that no card comes twice. Fronts that differ only in case, diacritics,
/// spacing, quotes or the mark at their end are one.
class FrontMemory {
public:
    /// `text` outlives the memory.
    FrontMemory(std::vector<std::string> fronts, const TextServices& text);

    /// In the order they came.
    [[nodiscard]] const std::vector<std::string>& fronts() const { return fronts_; }
    /// False when it was there already.
    bool add(const std::string& front);

private:
    [[nodiscard]] std::string keyOf(std::string_view front) const;

    const TextServices& text_;
    std::vector<std::string> fronts_;
    std::set<std::string, std::less<>> keys_;
};

}  // namespace tessary
