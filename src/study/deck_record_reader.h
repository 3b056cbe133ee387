#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessary {

/// Takes separated text apart, record by record. Fields may be quoted and then hold line breaks; a quote that does not
/// enclose its whole field is a character like any other. The text must outlive the reader.
class DeckRecordReader {
public:
    explicit DeckRecordReader(std::string_view text) : text_(text) {}

    [[nodiscard]] bool atEnd() const { return position_ >= text_.size(); }
    /// The number of the line that comes next, from 1.
    [[nodiscard]] std::size_t line() const { return line_; }
    /// Without its end.
    [[nodiscard]] std::string_view peekLine() const;

    void skipLine();
    /// The fields of the record that begins here; at least one.
    [[nodiscard]] std::vector<std::string> record(char separator);

private:
    std::string field(char separator);
    std::optional<std::string> quotedField(char separator);
    void takeLineEnd();

    std::string_view text_;
    std::size_t position_ = 0;
    std::size_t line_ = 1;
};

}  // namespace tessary
