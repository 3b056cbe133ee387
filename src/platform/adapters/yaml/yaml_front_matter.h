#pragma once

#include "platform/front_matter.h"

namespace tessary {

/// Text above 64 KiB is refused. A key without a value has an empty list; of two equal keys the later counts.
class YamlFrontMatter final : public FrontMatterReader {
public:
    [[nodiscard]] std::expected<FrontMatter, std::string> read(std::string_view yaml) const override;
};

}  // namespace tessary
