#include "companion/plim_spec.h"

#include <csignal>
#include <thread>

#include "base/text.h"
#include "companion/plim_sampling.h"
#include "companion_fixture.h"

namespace tessary {
namespace {

constexpr const char* kDocument =
    R"({"version":1,"canvas":240,"blend":0.28,"base":{"dx":0},"baseSteps":{"eye":"open"},"reactions":{"idle":{)"
    R"("label":"L","dur":1,"loop":[0,1],"still":0.5,"desc":"D","pose":{"dx":[[0,1],[1,2,"lin"]]},)"
    R"("steps":{"eye":[[0,"shut"]]},"fx":[{"type":"drop","space":"body","c":"#FFFFFF","v":{"x":1},)"
    R"("tracks":{"a":[[0,1]]}}]}}})";

TEST(PlimSpec, CarriesEightReactions) {
    struct Known {
        PlimReaction reaction;
        std::string label;
        double dur;
        std::vector<double> loop;
        double still;
        std::size_t tracks;
        std::size_t effects;
    };
    const std::vector<Known> table{
        {PlimReaction::idle, "Atento", 4, {0, 4}, 0.6, 11, 0},
        {PlimReaction::wave, "Saludando", 2.4, {}, 0.62, 10, 1},
        {PlimReaction::cur, "Curioso", 3.4, {1.2, 3.4}, 1.2, 13, 2},
        {PlimReaction::think, "Pensando", 3.6, {0.8, 3.6}, 1.2, 10, 1},
        {PlimReaction::study, "Estudiando", 3.8, {0.7, 3.8}, 1.05, 9, 1},
        {PlimReaction::win, "Acierto", 2, {}, 1.6, 10, 4},
        {PlimReaction::fail, "Error", 2.6, {}, 2, 16, 1},
        {PlimReaction::sleep, "Durmiendo", 6, {1.6, 6}, 2, 11, 1},
    };
    const PlimSpec& spec = plimSpec();
    EXPECT_EQ(spec.reactions.size(), table.size());
    EXPECT_EQ(spec.blend, kBlend);
    EXPECT_EQ(spec.base.size(), 18U);
    for (const Known& known : table) {
        const PlimSpec::Reaction& reaction = spec.reaction(known.reaction);
        EXPECT_EQ(reaction.label, known.label);
        EXPECT_FALSE(reaction.desc.empty()) << known.label;
        EXPECT_EQ(reaction.dur, known.dur) << known.label;
        EXPECT_EQ(reaction.loop.value_or(std::vector<double>{}), known.loop) << known.label;
        EXPECT_EQ(reaction.still, known.still) << known.label;
        EXPECT_EQ(reaction.pose->size(), known.tracks) << known.label;
        EXPECT_EQ(reaction.fx.value_or(std::vector<PlimSpec::Fx>{}).size(), known.effects) << known.label;
        EXPECT_EQ(plimReactionNamed(rawValue(known.reaction)), known.reaction);
    }
    EXPECT_EQ(plimReactionNamed("Idle"), std::nullopt);
}

// A track that goes back in time, or a channel that nothing draws, would show as a fault only on the screen.
TEST(PlimSpec, TheProgramsOwnTracksAreInOrder) {
    const auto inOrder = [](const auto& track) {
        return !track.empty() && std::ranges::is_sorted(track, {}, [](const auto& key) { return key.t; });
    };
    const PlimSpec& spec = plimSpec();
    for (const auto& [name, reaction] : spec.reactions) {
        for (const auto& [channel, track] : *reaction.pose) {
            EXPECT_TRUE(inOrder(track)) << name << ' ' << channel;
            EXPECT_TRUE(spec.base.contains(channel)) << name << ' ' << channel;
        }
        for (const auto& [part, keys] :
             reaction.steps.value_or(std::map<std::string, std::vector<PlimSpec::StepKey>>{})) {
            EXPECT_TRUE(inOrder(keys)) << name << ' ' << part;
            EXPECT_TRUE(spec.baseSteps.contains(part)) << name << ' ' << part;
        }
        for (const PlimSpec::Fx& effect : reaction.fx.value_or(std::vector<PlimSpec::Fx>{})) {
            EXPECT_TRUE(effect.v && effect.v->contains("x") && effect.v->contains("y")) << name << ' ' << effect.type;
            for (const auto& [key, track] : *effect.tracks) EXPECT_TRUE(inOrder(track)) << name << ' ' << key;
        }
    }
}

TEST(PlimSpec, ReadsEveryField) {
    const auto spec = decodePlimSpec(kDocument);
    ASSERT_TRUE(spec) << spec.error().describe("document");
    EXPECT_EQ(spec->base, (std::map<std::string, double>{{"dx", 0}}));
    EXPECT_EQ(spec->baseSteps, (std::map<std::string, std::string>{{"eye", "open"}}));
    const PlimSpec::Reaction& reaction = spec->reaction(PlimReaction::idle);
    EXPECT_EQ(reaction.label + reaction.desc, "LD");
    EXPECT_EQ(reaction.dur + reaction.still, 1.5);
    const PlimSpec::Track& track = reaction.pose->at("dx");
    ASSERT_EQ(track.size(), 2U);
    EXPECT_EQ(track[0].ease, "io");
    EXPECT_EQ(track[1].t, 1);
    EXPECT_EQ(track[1].v, 2);
    EXPECT_EQ(track[1].ease, "lin");
    EXPECT_EQ(reaction.steps->at("eye").at(0).v, "shut");
    const PlimSpec::Fx& effect = reaction.fx->at(0);
    EXPECT_EQ(effect.type + *effect.space + *effect.c, "dropbody#FFFFFF");
    EXPECT_EQ(effect.v->at("x") + effect.tracks->at("a").at(0).v, 2);

    const PlimSpec bare = specOf(reactionText("wave", R"("fx":[{"type":"zz"}])"));
    const PlimSpec::Reaction& wave = bare.reaction(PlimReaction::wave);
    EXPECT_FALSE(wave.loop || wave.pose || wave.steps || wave.loopRange());
    EXPECT_EQ(plimFrame(bare, PlimReaction::wave, 1).fx,
              (std::vector<FzFx>{{.type = "zz", .body = false, .color = {}, .v = {}}}));
}

TEST(PlimSpec, SaysWhatIsWrongWithADocument) {
    struct Fault {
        std::string instead;
        std::string of;
        std::string complaint;
    };
    const std::vector<Fault> faults{
        {"\"blend\":0.28,", "", "blend: missing"},
        {"\"blend\":0.28,", "\"blend\":null,", "blend: missing"},
        {"0.28", "\"0.28\"", "blend: expected a number"},
        {"\"base\":{\"dx\":0},", "", "base: missing"},
        {"\"base\":{\"dx\":0}", "\"base\":{\"dx\":\"0\"}", "base.dx: expected a number"},
        {"\"base\":{\"dx\":0}", "\"base\":[]", "base: expected an object"},
        {"\"eye\":\"open\"", "\"eye\":1", "baseSteps.eye: expected a text"},
        {"\"reactions\":", "\"motions\":", "reactions: missing"},
        {"\"idle\":{", "\"idle\":null,\"wave\":{", "reactions.idle: expected an object"},
        {"\"label\":\"L\",", "", "reactions.idle.label: missing"},
        {"\"desc\":\"D\",", "", "reactions.idle.desc: missing"},
        {"\"dur\":1,", "\"dur\":1,\"dur\":1,", "reactions.idle.dur: this key stands twice"},
        {"\"still\":0.5,", "", "reactions.idle.still: missing"},
        {"\"loop\":[0,1]", "\"loop\":1", "reactions.idle.loop: expected a list"},
        {"\"loop\":[0,1]", "\"loop\":[0,\"1\"]", "reactions.idle.loop[1]: expected a number"},
        {"[0,1],[1,2,\"lin\"]", "[0,1],[1]", "reactions.idle.pose.dx[1]: expected a time, a value and perhaps an ease"},
        {"[1,2,\"lin\"]", "[]", "reactions.idle.pose.dx[1]: expected a time, a value and perhaps an ease"},
        {"\"lin\"]", "\"lin\",0]", "reactions.idle.pose.dx[1]: expected a time, a value and perhaps an ease"},
        {"[1,2,\"lin\"]", "[1,2,3]", "reactions.idle.pose.dx[1][2]: expected a text"},
        {"[1,2,\"lin\"]", "[1,\"lin\"]", "reactions.idle.pose.dx[1][1]: expected a number"},
        {"[1,2,\"lin\"]", "{\"t\":1,\"v\":2}", "reactions.idle.pose.dx[1]: expected a list"},
        {"[0,\"shut\"]", "[0]", "reactions.idle.steps.eye[0]: expected a time and a shape"},
        {"[0,\"shut\"]", "[0,1]", "reactions.idle.steps.eye[0][1]: expected a text"},
        {"[0,\"shut\"]", "[0,\"shut\",\"lin\"]", "reactions.idle.steps.eye[0]: expected a time and a shape"},
        {"\"type\":\"drop\",", "", "reactions.idle.fx[0].type: missing"},
        {"\"x\":1", "\"x\":true", "reactions.idle.fx[0].v.x: expected a number"},
        {"\"a\":[[0,1]]", "\"a\":[0,1]", "reactions.idle.fx[0].tracks.a[0]: expected a list"},
    };
    for (const Fault& fault : faults) {
        const std::string document = replacedAll(kDocument, fault.instead, fault.of);
        ASSERT_NE(document, kDocument) << fault.instead;
        const auto spec = decodePlimSpec(document);
        ASSERT_FALSE(spec) << document;
        EXPECT_EQ(spec.error().describe("is invalid"), "is invalid: " + fault.complaint);
    }
    for (const std::string_view noJson : {"", "{", "[]", "null", "{}", "\xFF", "{\"blend\":0.28}{}"}) {
        EXPECT_FALSE(decodePlimSpec(noJson)) << noJson;
    }
    for (std::size_t end = 0; end < std::string_view(kDocument).size(); ++end) {
        EXPECT_FALSE(decodePlimSpec(std::string_view(kDocument).substr(0, end))) << end;
    }
}

TEST(PlimSpec, OneForTheWholeProcess) {
    std::array<const PlimSpec*, 8> seen{};
    std::vector<std::jthread> threads;
    for (const PlimSpec*& each : seen) threads.emplace_back([&each] { each = &plimSpec(); });
    threads.clear();
    for (const PlimSpec* each : seen) EXPECT_EQ(each, &plimSpec());
}

TEST(PlimSpecDeathTest, ABrokenDocumentEndsTheProgram) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto aborted = testing::KilledBySignal(SIGABRT);
    EXPECT_EXIT(static_cast<void>(plimSpecOrAbort("{\"blend\":1}")), aborted,
                "PlimSpec\\.json is invalid: base: missing\n");
    EXPECT_EXIT(static_cast<void>(plimSpecOrAbort("{")), aborted, "PlimSpec\\.json is invalid: .");
    EXPECT_EXIT(static_cast<void>(plimFrame(specOf(reactionText("idle", "")), PlimReaction::cur, 0)), aborted,
                "PlimSpec has no reaction cur\n");
}

}  // namespace
}  // namespace tessary
