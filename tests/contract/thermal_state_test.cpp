#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "contract/folder_fixture.h"
#include "platform/adapters/linux/linux_thermal_state.h"
#include "platform/adapters/system/no_on_device_model.h"

namespace tessary {
namespace {

class LinuxThermalStateTest : public FolderFixture, public ::testing::Test {
protected:
    struct Trip {
        std::string type;
        std::string temperature;
    };

    LinuxThermalStateTest() : FolderFixture(Kind::posix) {}

    void addZone(const std::string& temperature, const std::vector<Trip>& trips, const std::string& mode = "enabled") {
        const fs::path zone = folder_ / ("thermal_zone" + std::to_string(count_++));
        ASSERT_TRUE(files_->createFolders(zone));
        put(zone / "temp", temperature + "\n");
        put(zone / "mode", mode + "\n");
        for (std::size_t i = 0; i < trips.size(); ++i) {
            const std::string point = "trip_point_" + std::to_string(i);
            put(zone / (point + "_type"), trips[i].type + "\n");
            put(zone / (point + "_temp"), trips[i].temperature + "\n");
        }
    }

    void removeZones() {
        for (; count_ > 0; --count_) fs::remove_all(folder_ / ("thermal_zone" + std::to_string(count_ - 1)));
    }

    [[nodiscard]] ThermalLevel level() const { return LinuxThermalState(folder_).level(); }

    int count_ = 0;
};

TEST_F(LinuxThermalStateTest, ComparesWithTheTripPoints) {
    const std::vector<Trip> trips = {
        {"critical", "100000"}, {"hot", "90000"}, {"passive", "80000"}, {"active", "60000"}, {"active", "50000"}};
    const std::vector<std::pair<std::string, ThermalLevel>> cases = {
        {"49999", ThermalLevel::nominal},   {"50000", ThermalLevel::fair},     {"79999", ThermalLevel::fair},
        {"80000", ThermalLevel::serious},   {"94999", ThermalLevel::serious},  {"95000", ThermalLevel::critical},
        {"100001", ThermalLevel::critical}, {"-20000", ThermalLevel::nominal},
    };
    for (const auto& [temperature, expected] : cases) {
        addZone(temperature, trips);
        EXPECT_EQ(level(), expected) << temperature;
        removeZones();
    }
}

TEST_F(LinuxThermalStateTest, KnowsAHotPointWithoutAPassiveOne) {
    addZone("90000", {{"hot", "90000"}});
    EXPECT_EQ(level(), ThermalLevel::serious);
}

TEST_F(LinuxThermalStateTest, TheWorstZoneCounts) {
    addZone("50000", {{"active", "40000"}});
    addZone("97000", {{"critical", "100000"}});
    addZone("50000", {{"passive", "40000"}});
    EXPECT_EQ(level(), ThermalLevel::critical);
}

TEST_F(LinuxThermalStateTest, PassesOverWhatTellsNothing) {
    addZone("99000", {{"critical", "100000"}}, "disabled");
    addZone("warm", {{"passive", "40000"}});
    addZone("", {{"passive", "40000"}});
    addZone("50000x", {{"passive", "40000"}});
    addZone("50000", {{"critical", "0"}, {"passive", "-274000"}, {"passive", "?"}, {"unheard", "40000"}});
    addZone("99999999999999999999999", {{"critical", "100000"}});
    put(folder_ / "thermal_zone_that_is_a_file", "50000");
    ASSERT_TRUE(files_->createFolders(folder_ / "cooling_device0"));
    EXPECT_EQ(level(), ThermalLevel::nominal);
    addZone("50000", {{"passive", "?"}, {"passive", "40000"}});
    EXPECT_EQ(level(), ThermalLevel::serious);
}

TEST_F(LinuxThermalStateTest, AMachineThatTellsNothingIsNominal) {
    EXPECT_EQ(level(), ThermalLevel::nominal);
    EXPECT_EQ(LinuxThermalState(folder_ / "none").level(), ThermalLevel::nominal);
}

TEST(NoOnDeviceModel, TellsThatThereIsNone) {
    NoOnDeviceModel model;
    EXPECT_EQ(model.availability(), OnDeviceModel::Availability::deviceNotEligible);
    model.warmUp();
    const auto answer = model.respond("Be brief.", "Hello", {}, {});
    ASSERT_FALSE(answer);
    EXPECT_EQ(answer.error().kind, OnDeviceFailure::Kind::other);
    EXPECT_FALSE(answer.error().message.empty());
}

}  // namespace
}  // namespace tessary
