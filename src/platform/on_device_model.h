#pragma once

#include <expected>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace tessary {

struct GuidedField {
    enum class Type { text, number, integer, choice, textList, objectList };

    std::string name;
    Type type = Type::text;
    std::string guide;                    ///< what the model is told of the field; may be empty
    std::vector<std::string> choices;     ///< of a choice
    std::vector<GuidedField> fields;      ///< of the objects of a list
};

/// The shape a model's answer is guided into: a JSON object with these fields, in this order.
struct GuidedShape {
    std::string name;
    std::vector<GuidedField> fields;
};

struct OnDeviceFailure {
    enum class Kind {
        cancelled,
        contextExceeded,      ///< more text than the model takes
        refused,              ///< by the model's guardrails
        unsupportedLanguage,
        other,
    };
    Kind kind = Kind::other;
    std::string message;  ///< for people
};

/// The language model that the system itself carries. Any thread.
class OnDeviceModel {
public:
    enum class Availability { available, deviceNotEligible, notEnabled, notReady, other };

    virtual ~OnDeviceModel() = default;
    [[nodiscard]] virtual Availability availability() const = 0;
    /// Loads the model ahead of the first request. Does not wait for it.
    virtual void warmUp() = 0;
    /// The JSON text of one object of the shape. Blocks; returns within 50 ms when `stop` is requested.
    [[nodiscard]] virtual std::expected<std::string, OnDeviceFailure> respond(std::string_view instructions,
                                                                              std::string_view prompt,
                                                                              const GuidedShape& shape,
                                                                              std::stop_token stop) = 0;
};

}  // namespace tessary
