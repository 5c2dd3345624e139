// Reads the headers of libraries, ELF and PE. No field of them may be trusted.
#include <string>
#include <vector>

#include "FuzzTarget.h"
#include "header/ModuleFileHeader.h"

namespace {

using namespace zetaudiopluginhost;

/// Counts the bytes read: a small file must not cause endless reading.
class CountingReader final : public ByteReader
{
  public:
    explicit CountingReader(std::string_view all) : reader(all) {}
    std::uint64_t Size() const override { return reader.Size(); }
    bool Read(std::uint64_t offset, void* buffer, std::size_t size) override
    {
        ++reads;
        return reader.Read(offset, buffer, size);
    }
    std::uint64_t reads = 0;

  private:
    MemoryByteReader reader;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::vector<EntryPoint> entries = {
        "VSTPluginMain", "main", "GetPluginFactory", {"clap_entry", true}};
    for (const ModuleFormat format : {ModuleFormat::Elf, ModuleFormat::Pe}) {
        for (const ModuleMachine machine : {ModuleMachine::X86_64, ModuleMachine::AArch64}) {
            CountingReader reader(zetfuzz::Text(data, size));
            const auto why = WhyNotLoadable(reader, {format, machine}, entries);
            zetfuzz::Require(reader.reads <= 1000000, "a header is read with few reads");
            zetfuzz::Require(size > 64 || why.has_value(), "a few bytes are no library");
        }
    }
    MemoryByteReader elf(zetfuzz::Text(data, size));
    WhyElfNotLoadable(elf, ModuleMachine::X86_64, entries);
    WhyPeNotLoadable(elf, ModuleMachine::X86_64, entries);
    CountingReader imports(zetfuzz::Text(data, size));
    PeImports(imports);
    zetfuzz::Require(imports.reads <= 1000000, "imports are read with few reads");
    return 0;
}
