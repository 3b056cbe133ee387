#pragma once

#include "platform/on_device_model.h"

namespace tessary {

/// For systems that carry no language model.
class NoOnDeviceModel final : public OnDeviceModel {
public:
    [[nodiscard]] Availability availability() const override { return Availability::deviceNotEligible; }
    void warmUp() override {}
    [[nodiscard]] std::expected<std::string, OnDeviceFailure> respond(std::string_view /*instructions*/,
                                                                      std::string_view /*prompt*/,
                                                                      const GuidedShape& /*shape*/,
                                                                      std::stop_token /*stop*/) override {
        return std::unexpected(
            OnDeviceFailure{OnDeviceFailure::Kind::other, "This system has no language model of its own."});
    }
};

}  // namespace tessary
