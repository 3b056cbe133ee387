#include "app/pdf_file.h"

#include "base/text.h"

namespace tessary {

std::optional<std::string> whyNoPdf(const FileSystem& files, const std::filesystem::path& file) {
    constexpr std::string_view kSignature = "%PDF-";
    constexpr std::size_t kSignatureWithin = 1024;  // bytes; readers take it anywhere there
    const FileResult<std::string> content = files.read(file);
    if (!content) return content.error().message;
    const std::string_view head = std::string_view(*content).substr(0, kSignatureWithin);
    const bool isPdf = head.find(kSignature) != std::string_view::npos;
    if (isPdf || asciiLowered(file.extension().string()) == ".pdf") return std::nullopt;
    return "\"" + file.string() + "\" is not a PDF.";
}

}  // namespace tessary
