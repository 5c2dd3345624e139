#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "ManagerFixture.h"

/// The plug-ins of a fault matrix, and how the next start must find them. A row has a number of `workers`.
template<typename Fixture, typename Row>
class FaultMatrixFixture : public Fixture, public testing::WithParamInterface<Row>
{
  protected:
    FaultMatrixFixture()
        : good{this->Install("good/vst2_effect", "a_effect").string(),
               this->Install("good/vst2_synth", "b_synth").string(),
               this->Install("good/vst2_main_entry", "z_main").string()},
          bad{this->Install("bad/crash_in_entry", "m_bad").string()}
    {
        const int workers = this->GetParam().workers;
        this->SetSwitch("zetaudiofilterscan.Workers", std::to_string(workers));
        // Culprits are reported last. Only behind the first of two there is something left to scan.
        if (workers > 1)
            bad.push_back(this->Install("bad/crash_in_entry", "n_bad").string());
    }

    bool IsBad(const std::string& path) const { return std::find(bad.begin(), bad.end(), path) != bad.end(); }

    /// The next scan must find every good plug-in, and ban every bad one for its crash.
    void ExpectNextScanFindsAll() const
    {
        const ScanSummary next = this->Scan();
        EXPECT_EQ(next.exitStatus, 0) << next.messages;
        EXPECT_EQ(this->ListedPaths({"--enabled"}), good);
        for (const std::string& path : bad) {
            const auto banned = this->FindListed(path);
            ASSERT_TRUE(banned && banned->IsBanned());
            EXPECT_THAT(banned->reason, testing::HasSubstr("crashed"));
        }
    }

    const std::vector<std::string> good;
    std::vector<std::string> bad;
};
