#include <zetscanprotocol/ScanRelay.h>

#include <gtest/gtest.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zettesting/HostFixture.h>

namespace zetscanprotocol {
namespace {

namespace fs = std::filesystem;

class ScanRelay : public zettesting::HostFixture
{
  protected:
    fs::path Write(const std::string& name) const
    {
        const fs::path runtime =
            zetcore::filesupport::ToNativePath(zetcore::filesupport::commondirs::RuntimeDir().FullPath());
        zettesting::WriteAll(runtime / name, "left");
        return runtime / name;
    }

    // On Windows the runtime folder is the temporary one.
    const zettesting::ScopedTemporaryFolder temporary{folder / "runtime"};
};

TEST_F(ScanRelay, OfOneHostGoesAndEverythingElseStays)
{
    const fs::path culprits = Write(RelayNamesOf(12) + "5-77"),
                   sign = Write(RelayNamesOf(12) + "5-77-at-work-9-9-");
    const fs::path others = Write(RelayNamesOf(123) + "5-77"), block = Write("zetaudiofilterscan-home-12");
    DeleteRelayOf(12);
    EXPECT_FALSE(fs::exists(culprits));
    EXPECT_FALSE(fs::exists(sign));
    EXPECT_TRUE(fs::exists(others));
    EXPECT_TRUE(fs::exists(block));
    DeleteRelayOf(12);
}

TEST_F(ScanRelay, WhatCannotBeDeletedIsSaidAndHarmsNobody)
{
    zetcore::debug::SetMasterTraceVolume(1);
    const fs::path full = Write("other").replace_filename(RelayNamesOf(12) + "full");
    fs::create_directories(full / "inside");
    DeleteRelayOf(12);
    EXPECT_EQ(traceLines->size(), 1u);
    EXPECT_TRUE(fs::exists(full));
}

} // namespace
} // namespace zetscanprotocol
