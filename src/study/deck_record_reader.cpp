#include "study/deck_record_reader.h"

#include <algorithm>
#include <utility>

#include "study/deck_markup.h"

namespace tessary {

namespace {

bool isLineBreak(char c) { return c == '\n' || c == '\r'; }

std::size_t lineBreaks(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::count(withPlainLineBreaks(text), '\n'));
}

}  // namespace

std::string_view DeckRecordReader::peekLine() const {
    const auto rest = text_.substr(position_);
    return rest.substr(0, rest.find_first_of("\r\n"));
}

void DeckRecordReader::skipLine() {
    position_ += peekLine().size();
    takeLineEnd();
}

std::vector<std::string> DeckRecordReader::record(char separator) {
    std::vector<std::string> fields;
    while (true) {
        fields.push_back(field(separator));
        if (atEnd() || text_[position_] != separator) break;
        ++position_;
    }
    takeLineEnd();
    return fields;
}

std::string DeckRecordReader::field(char separator) {
    if (auto quoted = quotedField(separator)) return std::move(*quoted);
    const auto rest = peekLine();
    const auto length = std::min(rest.size(), rest.find(separator));
    position_ += length;
    return std::string(rest.substr(0, length));
}

std::optional<std::string> DeckRecordReader::quotedField(char separator) {
    if (atEnd() || text_[position_] != '"') return std::nullopt;
    std::string content;
    auto from = position_ + 1;
    while (true) {
        const auto quote = text_.find('"', from);
        if (quote == std::string_view::npos) return std::nullopt;
        content += text_.substr(from, quote - from);
        from = quote + 1;
        if (from >= text_.size() || text_[from] != '"') break;
        content += '"';
        ++from;
    }
    const bool isEnd = from == text_.size() || text_[from] == separator || isLineBreak(text_[from]);
    if (!isEnd) return std::nullopt;
    line_ += lineBreaks(text_.substr(position_, from - position_));
    position_ = from;
    return content;
}

void DeckRecordReader::takeLineEnd() {
    if (atEnd()) return;
    position_ += text_.substr(position_).starts_with("\r\n") ? 2 : 1;
    ++line_;
}

}  // namespace tessary
