#pragma once

#include "platform/text_services.h"

namespace tessary {

/// Folding drops every nonspacing mark of the canonical decomposition, then folds case without regard to a language.
/// Texts must be shorter than one gibibyte; longer ones throw std::length_error.
class IcuTextServices final : public TextServices {
public:
    [[nodiscard]] std::string folded(std::string_view text) const override;
    [[nodiscard]] std::size_t characterCount(std::string_view text) const override;
    [[nodiscard]] std::string_view prefix(std::string_view text, std::size_t count) const override;
    [[nodiscard]] bool isLetter(char32_t codePoint) const override;
    [[nodiscard]] bool isLowercaseLetter(char32_t codePoint) const override;
    [[nodiscard]] bool isDigit(char32_t codePoint) const override;
    [[nodiscard]] int columns(char32_t codePoint) const override;
};

}  // namespace tessary
