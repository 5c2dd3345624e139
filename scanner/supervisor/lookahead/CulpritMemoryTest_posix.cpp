#include <sys/stat.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <zettesting/HostFixture.h>

#include "supervisor/lookahead/CulpritMemory.h"
#include "supervisor/process/HostProcess.h"

namespace zetaudiofilterscan {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;
using zetaudiopluginhost::BanReason;

class CulpritMemoryTestPosix : public zettesting::HostFixture
{
  protected:
    CulpritMemoryTestPosix()
    {
        zettesting::WriteAll(folder / "a.so", "module");
        culprit.info.reason = "crashed";
        culprit.info.stamp = zetaudiofilterhost::GetModuleFileStamp(culprit.locator);
        memory.Leave({culprit});
        const std::filesystem::directory_iterator entries(folder / "runtime");
        file = entries->path();
        EXPECT_EQ(std::distance(entries, {}), 1);
    }

    mode_t ModeOfFile() const
    {
        struct stat status
        {};
        EXPECT_EQ(::lstat(file.c_str(), &status), 0);
        return status.st_mode & 07777;
    }

    BanReason culprit{PluginLocator(TechnologyType::VST, zettesting::ToWide(folder / "a.so")), {}};
    const CulpritMemory memory{IdentifyHost(HostProcessNumber()), zettesting::ToWide(prefs / "plugins.xml"),
                               std::nullopt};
    std::filesystem::path file;
};

TEST_F(CulpritMemoryTestPosix, TheFileIsTheUsersAlone)
{
    EXPECT_EQ(ModeOfFile(), 0600u);
    // Neither are the permissions kept that somebody else has given it.
    ::chmod(file.c_str(), 0666);
    memory.Leave({culprit});
    EXPECT_EQ(ModeOfFile(), 0600u);
    EXPECT_THAT(memory.Take(), ElementsAre(culprit));
}

TEST_F(CulpritMemoryTestPosix, WhatOthersMayWriteBlamesNobody)
{
    ::chmod(file.c_str(), 0660);
    EXPECT_THAT(memory.Take(), IsEmpty());
    memory.Leave({culprit});
    ::chmod(file.c_str(), 0602);
    EXPECT_THAT(memory.Take(), IsEmpty());
}

TEST_F(CulpritMemoryTestPosix, AnotherUsersFileBlamesNobody)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "a file can only be given away by the administrator";
    ASSERT_EQ(::chown(file.c_str(), 65534, 65534), 0);
    EXPECT_THAT(memory.Take(), IsEmpty());
}

TEST_F(CulpritMemoryTestPosix, ALinkIsNeitherReadNorWrittenThrough)
{
    const std::filesystem::path victim = folder / "victim";
    std::filesystem::rename(file, victim);
    const std::string content = zettesting::ReadAll(victim);
    std::filesystem::create_symlink(victim, file);
    EXPECT_THAT(memory.Take(), IsEmpty());
    EXPECT_EQ(zettesting::ReadAll(victim), content);

    std::filesystem::create_symlink(victim, file);
    BanReason other = culprit;
    other.info.reason = "hung";
    memory.Leave({other});
    EXPECT_EQ(zettesting::ReadAll(victim), content);
    EXPECT_FALSE(std::filesystem::is_symlink(file));
    EXPECT_THAT(memory.Take(), ElementsAre(other));
}

TEST_F(CulpritMemoryTestPosix, APipeInItsPlaceIsNotWaitedFor)
{
    std::filesystem::remove(file);
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    EXPECT_THAT(memory.Take(), IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(CulpritMemoryTestPosix, WithoutAHostNothingIsRemembered)
{
    const CulpritMemory nobodys(std::nullopt, zettesting::ToWide(prefs / "plugins.xml"), std::nullopt);
    nobodys.Leave({culprit});
    EXPECT_THAT(nobodys.Take(), IsEmpty());
    EXPECT_THAT(memory.Take(), ElementsAre(culprit));
}

} // namespace
} // namespace zetaudiofilterscan
