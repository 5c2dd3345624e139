#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zetaudiofilterscan {

/// The command line that makes this program a worker: `--worker CHANNEL PAGE PARENT`. Private between the
/// two; the handles are those that the worker inherits (descriptors, or handle values on Windows).
struct WorkerArguments
{
    static constexpr char option[] = "--worker";

    std::uint64_t channel = 0;
    std::uint64_t page = 0;
    std::uint64_t parentProcess = 0;

    /// The arguments, without the program's name.
    std::vector<std::string> ToArguments() const;
    /// The result is empty unless these are exactly a worker's arguments.
    static std::optional<WorkerArguments> Read(const std::vector<std::string_view>& arguments);
};

} // namespace zetaudiofilterscan
