#include "ai/front_memory.h"

#include "base/text.h"

namespace tessary {

FrontMemory::FrontMemory(std::vector<std::string> fronts, const TextServices& text)
    : text_(text), fronts_(std::move(fronts)) {
    for (const std::string& front : fronts_) keys_.insert(keyOf(front));
}

bool FrontMemory::add(const std::string& front) {
    if (!keys_.insert(keyOf(front)).second) return false;
    fronts_.push_back(front);
    return true;
}

std::string FrontMemory::keyOf(std::string_view front) const {
    std::string folded = text_.folded(front);
    for (const std::string_view quote : {"\"", "'", "“", "”", "„", "‘", "’", "«", "»"}) {
        folded = replacedAll(folded, quote, "");
    }
    std::string key;
    for (const char c : trimmed(folded)) {
        const bool space = c == ' ' || c == '\t' || c == '\n' || c == '\r';
        if (!space) {
            key += c;
        } else if (!key.ends_with(' ')) {
            key += ' ';
        }
    }
    constexpr std::string_view kEndMarks = " .?!:;,";
    key.erase(key.find_last_not_of(kEndMarks) + 1);
    return key.empty() ? folded : key;
}

}  // namespace tessary
