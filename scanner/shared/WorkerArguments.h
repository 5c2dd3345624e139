#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zetaudiofilterscan {

/// The command line that makes this program a worker: `--worker CHANNEL PAGE PARENT`. Private between the
/// two; the handles are those that the worker inherits (descriptors, or handle values on Windows). With
/// `--copies` behind it, the process makes copies of itself, and those are workers with these descriptors. It
/// is asked for copies through the channel, and has no page itself.
struct WorkerArguments
{
    static constexpr char option[] = "--worker";
    static constexpr char copiesOption[] = "--copies";

    std::uint64_t channel = 0;
    std::uint64_t page = 0;
    std::uint64_t parentProcess = 0;
    bool makesCopies = false;

    /// The arguments, without the program's name.
    std::vector<std::string> ToArguments() const;
    /// The result is empty unless these are exactly a worker's arguments.
    static std::optional<WorkerArguments> Read(const std::vector<std::string_view>& arguments);
};

} // namespace zetaudiofilterscan
