#include "program_fixture.h"

namespace tessary {
namespace {

TEST_F(ProgramTest, APictureOfTheCompanionIsPrinted) {
    // All tracks are at a key, or between keys of one value.
    EXPECT_EQ(run({"companion", "frame", "study", "0.7", "--json"}).out,
              R"({"pose":{"browY":0,"dx":0,"dy":2,"glow":1.1,"la":182,"lid":0.3,"lx":-0.5,"ly":0.9,"mouthS":1,"pr":1,)"
              R"("ra":-2,"rot":-6,"sx":1,"sy":1,"tail":0.7,"tailA":4,"tilt":0,"wink":0},)"
              R"("steps":{"brow":"none","eye":"open","mouth":"tiny"},"fx":[{"type":"notebook","body":true,)"
              R"("v":{"a":1,"dy":0,"flip":0,"rot":-4,"sc":0.86,"x":128,"y":166}}]})"
              "\n");
    const std::string sleeping = run({"companion", "frame", "sleep", "1e3", "--json"}).out;
    EXPECT_NE(sleeping.find(R"("fx":[{"type":"zz","body":false,"color":"#FFE39A","v":{)"), std::string::npos);

    const Result table = run({"companion", "frame", "CUR", "3.4"});
    EXPECT_EQ(table.code, 0) << table.err;
    for (const std::string line :
         {"rot      6", "mouth    o", "spark   canvas  #FFB3DE  a 1, r 90, s 6, x 198, y 66"}) {
        EXPECT_NE(table.out.find("\n" + line + "\n"), std::string::npos) << table.out;
    }
    EXPECT_EQ(run({"companion", "frame", "idle", "0"}).out.find("EFFECT"), std::string::npos);
}

TEST_F(ProgramTest, TheCompanionsReactionsAreListed) {
    const std::string list = run({"companion", "list"}).out;
    EXPECT_TRUE(
        list.starts_with("idle   Atento      4 s, repeats from 0 s\n"
                         "    Flota, la estela respira, mira de reojo y parpadea.\n"
                         "wave   Saludando   2.4 s, once\n"))
        << list;
    const std::string json = run({"companion", "list", "--json"}).out;
    EXPECT_NE(json.find(R"({"name":"cur","label":"Curioso","description":"Algo le llama la atención: mira, vuelve a )"
                        R"(mirar y se inclina con los ojos muy abiertos.","seconds":3.4,"loop":[1.2,3.4],)"
                        R"("still":1.2},{"name":"think",)"),
              std::string::npos)
        << json;
}

TEST_F(ProgramTest, TheCompanionIsAskedForWhatItCanDo) {
    struct Case {
        std::vector<std::string> arguments;
        std::string says;
    };
    for (const auto& [arguments, says] : std::vector<Case>{
             {{"dance", "1"}, "REACTION takes idle, wave, cur, think, study, win, fail, sleep, not \"dance\"."},
             {{"win", "soon"}, "SECONDS takes a number of 0 or more, not \"soon\"."},
             {{"win", "1s"}, "\"1s\""},
             {{"win", "nan"}, "\"nan\""},
             {{"win", "inf"}, "\"inf\""},
             {{"win", ""}, "\"\""},
             {{"--", "win", "-1"}, "\"-1\""},
             {{"win"}, "SECONDS"},
         }) {
        std::vector<std::string> command{"companion", "frame"};
        command.insert(command.end(), arguments.begin(), arguments.end());
        const Result result = run(command);
        EXPECT_EQ(result.code, 2) << says << result.out;
        EXPECT_NE(result.err.find(says), std::string::npos) << result.err;
        EXPECT_EQ(result.out, "");
    }
}

}  // namespace
}  // namespace tessary
