#include "companion/plim_spec.h"

#include <cstdio>
#include <cstdlib>

#include "base/json_record.h"
#include "companion/plim_document.h"
#include "companion/plim_reaction_names.h"

namespace tessary {

template <>
struct Record<PlimSpec::Fx> {
    static constexpr auto fields = std::tuple{
        required("type", &PlimSpec::Fx::type),     optional("space", &PlimSpec::Fx::space),
        optional("c", &PlimSpec::Fx::c),           optional("v", &PlimSpec::Fx::v),
        optional("tracks", &PlimSpec::Fx::tracks),
    };
};

template <>
struct Record<PlimSpec::Reaction> {
    static constexpr auto fields = std::tuple{
        required("label", &PlimSpec::Reaction::label), required("desc", &PlimSpec::Reaction::desc),
        required("dur", &PlimSpec::Reaction::dur),     optional("loop", &PlimSpec::Reaction::loop),
        required("still", &PlimSpec::Reaction::still), optional("pose", &PlimSpec::Reaction::pose),
        optional("steps", &PlimSpec::Reaction::steps), optional("fx", &PlimSpec::Reaction::fx),
    };
};

template <>
struct Record<PlimSpec> {
    static constexpr auto fields = std::tuple{
        required("blend", &PlimSpec::blend),
        required("base", &PlimSpec::base),
        required("baseSteps", &PlimSpec::baseSteps),
        required("reactions", &PlimSpec::reactions),
    };
};

// Keys are arrays, to keep a track on one line.

static void readValue(JsonValue json, const ReadContext& context, PlimSpec::Key& key) {
    const std::size_t count = json.elementCount();
    if (count != 2 && count != 3) throw JsonMismatch("expected a time, a value and perhaps an ease");
    std::size_t index = 0;
    json.forEachElement([&](JsonValue element) {
        switch (index++) {
            case 0: return readValue(element, context, key.t);
            case 1: return readValue(element, context, key.v);
            default: return readValue(element, context, key.ease);
        }
    });
}

static void readValue(JsonValue json, const ReadContext& context, PlimSpec::StepKey& key) {
    if (json.elementCount() != 2) throw JsonMismatch("expected a time and a shape");
    std::size_t index = 0;
    json.forEachElement([&](JsonValue element) {
        if (index++ == 0) return readValue(element, context, key.t);
        readValue(element, context, key.v);
    });
}

namespace {

[[noreturn]] void fatal(const std::string& message) {
    std::fprintf(stderr, "%s\n", message.c_str());
    std::abort();
}

}  // namespace

std::optional<PlimSpec::LoopRange> PlimSpec::Reaction::loopRange() const {
    if (!loop || loop->size() != 2 || !((*loop)[0] < (*loop)[1])) return std::nullopt;
    return LoopRange{(*loop)[0], (*loop)[1]};
}

const PlimSpec::Reaction& PlimSpec::reaction(PlimReaction reaction) const {
    const auto found = reactions.find(std::string(rawValue(reaction)));
    if (found == reactions.end()) fatal("PlimSpec has no reaction " + std::string(rawValue(reaction)));
    return found->second;
}

std::expected<PlimSpec, DecodingError> decodePlimSpec(std::string_view document) {
    return decodeJson<PlimSpec>(std::string(document), {.now = {}, .freshId = [] { return Uuid{}; }});
}

PlimSpec plimSpecOrAbort(std::string_view document) {
    std::expected<PlimSpec, DecodingError> spec = decodePlimSpec(document);
    if (!spec) fatal(spec.error().describe("PlimSpec.json is invalid"));
    return *std::move(spec);
}

const PlimSpec& plimSpec() {
    static const PlimSpec spec = plimSpecOrAbort(kPlimDocument);
    return spec;
}

}  // namespace tessary
