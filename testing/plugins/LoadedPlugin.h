#pragma once

#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#define BOOST_DLL_USE_STD_FS
#include <boost/dll/shared_library.hpp>
#include <zettesting/TestPlugins.h>

#include "clap/ClapAbi.h"
#include "vst2/Vst2Abi.h"
#include "vst3/Vst3Abi.h"

namespace zettesting {

namespace clap = zetaudiopluginhost::clap;
namespace vst2 = zetaudiopluginhost::vst2;
namespace vst3 = zetaudiopluginhost::vst3;

/// Answers as a sane host does. The answer to `HostCurrentId` is the id of the last CreateEffect.
std::intptr_t AnswerAsHost(vst2::Effect* effect, std::int32_t opcode, std::int32_t index, std::intptr_t value,
                           void* pointer, float option);

boost::dll::shared_library LoadLibraryOf(std::string_view plugin);

/// The library's entry function, under its new or its old name. Throws when it has none.
vst2::EntryFunction EntryOf(const boost::dll::shared_library& library);

struct CloseEffect
{
    void operator()(vst2::Effect* effect) const
    {
        effect->dispatcher(effect, vst2::EffectClose, 0, 0, nullptr, 0);
    }
};
using EffectPointer = std::unique_ptr<vst2::Effect, CloseEffect>;

/// Makes and opens an effect; `id` chooses a plug-in of a shell. Null when the entry function returns null.
EffectPointer CreateEffect(const boost::dll::shared_library& library, std::int32_t id = 0);

/// Asks for a text; the buffer is far larger than a plug-in may fill.
std::string AskText(vst2::Effect& effect, vst2::EffectOpcode opcode);
std::intptr_t AskNumber(vst2::Effect& effect, vst2::EffectOpcode opcode);

struct ReleaseInterface
{
    template<class Interface>
    void operator()(Interface* pointer) const
    {
        pointer->Release();
    }
};
template<class Interface>
using InterfacePointer = std::unique_ptr<Interface, ReleaseInterface>;

/// Returns null when the object does not have the interface.
template<class Interface>
InterfacePointer<Interface> Query(vst3::FUnknown& object)
{
    void* found = nullptr;
    if (object.QueryInterface(Interface::iid.Data(), &found) != vst3::resultOk)
        return nullptr;
    return InterfacePointer<Interface>(static_cast<Interface*>(found));
}

/// Reads the text of an array. The text may fill the array to its last unit.
template<class Unit, std::size_t size>
std::basic_string_view<Unit> Text(const Unit (&array)[size])
{
    std::size_t length = 0;
    while (length < size && array[length] != 0)
        ++length;
    return {array, length};
}

/// A VST3 library. The constructor enters it as the platform demands, and the destructor leaves it.
class EnteredModule
{
  public:
    explicit EnteredModule(std::string_view plugin);
    ~EnteredModule();
    EnteredModule(const EnteredModule&) = delete;
    EnteredModule& operator=(const EnteredModule&) = delete;

    /// Null when the module returns none.
    InterfacePointer<vst3::IPluginFactory> Factory() const;

  private:
    boost::dll::shared_library library;
};

/// A host with a name, for components. References are counted but free nothing; its owner destroys it.
class NamedHost final : public vst3::IHostApplication
{
  public:
    vst3::Result ZET_VST3_CALL QueryInterface(const char* wanted, void** object) override;
    std::uint32_t ZET_VST3_CALL AddRef() override { return ++references; }
    std::uint32_t ZET_VST3_CALL Release() override { return --references; }
    vst3::Result ZET_VST3_CALL GetName(char16_t* name) override;
    vst3::Result ZET_VST3_CALL CreateInstance(const char*, const char*, void** object) override;

    /// How many references plug-ins have taken and not given back.
    std::uint32_t References() const noexcept { return references; }

  private:
    std::uint32_t references = 0;
};

/// A CLAP library. The constructor enters it, and the destructor leaves it.
class EnteredClap
{
  public:
    explicit EnteredClap(std::string_view plugin);
    ~EnteredClap();
    EnteredClap(const EnteredClap&) = delete;
    EnteredClap& operator=(const EnteredClap&) = delete;

    const clap::PluginFactory& Factory() const;
    /// Null behind the last one, and where the library has none.
    const clap::Descriptor* Described(std::uint32_t index) const;
    /// "CountEntered" or "CountInstances".
    int Count(const char* what) const { return library.get<int()>(what)(); }

  private:
    boost::dll::shared_library library;
    const clap::Entry& entry;
};

/// A host with a name and without extensions.
const clap::Host& NamedClapHost();

struct DestroyInstance
{
    void operator()(const clap::Plugin* plugin) const { plugin->destroy(plugin); }
};
using InstancePointer = std::unique_ptr<const clap::Plugin, DestroyInstance>;

/// Asks a good plug-in for its facts through the format's own interface.
std::vector<TestPluginFacts> AskForFacts(const std::string& plugin);

} // namespace zettesting
