#include <zetcore/process/SpawnProgram.h>

#include <array>
#include <string>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <zetcore/filesupport/handles/Descriptor.h>

namespace zetcore::process {
namespace {

using filesupport::Descriptor;

int ExitStatus(int process)
{
    int status = 0;
    EXPECT_EQ(::waitpid(process, &status, 0), process);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(SpawnProgram, TheProgramHasItsArgumentsAndTheGivenDescriptorsOnly)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    Descriptor read(ends[0]);
    Descriptor write(ends[1]);
    const Descriptor another(::dup(read.Get()));

    const std::string script =
        "read -r nothing; ended=$?; "
        "for n in 0 1 2 3 4 5 6 7 8 9; do [ -e /proc/$$/fd/$n ] && open=$open$n; done; "
        "echo $1 $ended $open >&3";
    std::error_code error;
    const int process = SpawnProgram(
        {"/bin/sh", {"-c", script, "name", "word"}, {nullDevice, nullDevice, nullDevice, write.Get()}},
        error);
    ASSERT_FALSE(error) << error.message();
    write.Close();
    EXPECT_EQ(ExitStatus(process), 0);
    char text[64] = {};
    EXPECT_GT(::read(read.Get(), text, sizeof text - 1), 0);
    EXPECT_STREQ(text, "word 1 0123\n");
}

TEST(SpawnProgram, AProgramThatIsNotThereIsAnError)
{
    std::error_code error;
    EXPECT_EQ(SpawnProgram({"/no/such/program", {}, {nullDevice, nullDevice, nullDevice}}, error), -1);
    EXPECT_EQ(error, std::errc::no_such_file_or_directory);
}

} // namespace
} // namespace zetcore::process
