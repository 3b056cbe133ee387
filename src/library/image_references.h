#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The images that Markdown shows. Texts are UTF-8 with "\n" as line end. Pure functions, any thread. The time is
/// linear in the text, whatever the text is.
namespace tessary {

enum class ImageForm {
    markdown,  ///< ![alt](target), or the definition that ![alt][label] leads to
    wiki,      ///< ![[target]]
    html,      ///< <img src="target">
};

struct ImageReference {
    ImageForm form = ImageForm::markdown;
    std::size_t begin = 0;  ///< the target as written, in bytes, with the signs that enclose it ("<>" or quotes)
    std::size_t end = 0;
    std::string target;  ///< without escapes and percent signs
};

/// The images a text shows outside code, in the order of their targets. A definition comes once.
[[nodiscard]] std::vector<ImageReference> imageReferences(std::string_view markdown);

/// `targets[i]` takes the place of the target of `images[i]`, written so that it is read as this very name; an image
/// without a new target stays.
[[nodiscard]] std::string withImageTargets(std::string_view markdown, const std::vector<ImageReference>& images,
                                           const std::vector<std::optional<std::string>>& targets);

}  // namespace tessary
