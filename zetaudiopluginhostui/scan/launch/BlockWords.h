#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace zetaudiopluginhostui {

/// Reads and writes the 32-bit words of the shared block, which another process uses at the same time.
class BlockWords
{
  public:
    explicit BlockWords(void* block) : words(static_cast<std::uint32_t*>(block)) {}

    std::uint32_t Load(std::size_t index) const { return std::atomic_ref(words[index]).load(); }
    void Exchange(std::size_t index, std::uint32_t value) { std::atomic_ref(words[index]).exchange(value); }

  private:
    std::uint32_t* words;
};

} // namespace zetaudiopluginhostui
