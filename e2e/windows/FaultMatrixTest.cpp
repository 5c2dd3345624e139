// Kills the host, the scanner or a worker when it comes to a step of a scan. The next start must be right all
// the same.
#include <fstream>
#include <string_view>

#include <gmock/gmock.h>

#include "FaultMatrixFixture.h"
#include "FaultSteps.h"

namespace {

using Strings = std::vector<std::string>;

struct Row
{
    Step step;
    int workers = 1;

    friend void PrintTo(const Row& row, std::ostream* stream)
    {
        *stream << NameOf(row.step, row.workers, "Itself");
    }
};

std::vector<Row> Rows()
{
    // Only files of POSIX systems have places where they are written, and only there a worker makes copies.
    const auto isHere = [](const Step& step) {
        const std::string_view place = step.place;
        return !place.starts_with("write.") && !place.starts_with("append.") &&
               place != "worker.makes-copies";
    };
    constexpr int several = 4;
    std::vector<Row> rows;
    for (const Step& step : StepsInTurn())
        if (isHere(step))
            rows.push_back({step, 1});
    for (const Step& step : StepsAhead())
        if (isHere(step))
            rows.push_back({step, several});
    return rows;
}

class FaultMatrix : public FaultMatrixFixture<ManagerFixture, Row>
{
  protected:
    FaultMatrix()
    {
        const Step& step = GetParam().step;
        const auto pipe = folder / "stops" / "here";
        std::filesystem::create_directory(pipe.parent_path());
        std::ofstream(pipe).flush();
        AllowWriting(pipe.parent_path());
        environment["ZET_FAULT_PIPE"] = pipe.string();
        std::string fault = std::string(step.place) + ":" + std::to_string(step.visit) + ":stop";
        // A restart that fails goes on only when the user cancels. So the time is up at once.
        if (IsBeforePort(step))
            fault += ";host.port-wait:200:late=61";
        environment["ZET_FAULT"] = fault;
    }

    /// The place and the process that was killed there; empty when none came there.
    std::string Announced() const
    {
        std::ifstream stream(folder / "stops" / "here.taken");
        std::string line;
        std::getline(stream, line);
        return line;
    }
};

INSTANTIATE_TEST_SUITE_P(Steps, FaultMatrix, testing::ValuesIn(Rows()),
                         [](const auto& test) { return testing::PrintToString(test.param); });

TEST_P(FaultMatrix, NothingIsLost)
{
    const std::string_view place = GetParam().step.place;
    const auto scan = Run({"scan"});
    ASSERT_THAT(Announced(), testing::StartsWith(std::string(place) + " ")) << scan.error;
    EXPECT_FALSE(scan.timedOut) << scan.error;
    ExpectNoProcessLeft();
    environment["ZET_FAULT"] = std::nullopt;
    const bool hostLives = !place.starts_with("host.");
    if (!hostLives) {
        EXPECT_EQ(scan.exitStatus, 9) << scan.error;
    } else if (GetParam().step.phase == Phase::BeforeConnection) {
        EXPECT_THAT(scan.exitStatus, testing::AnyOf(0, 3)) << scan.error;
    } else {
        EXPECT_EQ(scan.exitStatus, 0) << scan.error;
    }

    const auto list = Run({"list", "--json"});
    EXPECT_EQ(list.exitStatus, 0) << list.error;
    EXPECT_EQ(list.error, "");
    Strings known;
    for (const ListedPlugin& plugin : ReadList(list.output)) {
        EXPECT_EQ(plugin.IsBanned(), IsBad(plugin.path)) << plugin.path << " " << plugin.reason;
        known.push_back(plugin.path);
    }
    if (hostLives && scan.exitStatus == 0) {
        EXPECT_THAT(known, testing::IsSupersetOf(good)) << scan.error;
    }

    ExpectNextScanFindsAll();
}

} // namespace
