#pragma once

#include <optional>
#include <vector>

#include "vst3/Vst3Abi.h"
#include "vst3/Vst3Description.h"
#include "vst3/Vst3Object.h"
#include <zetaudiopluginhost/PluginFailure.h>

namespace zetaudiopluginhost::vst3 {

/// The factory of a loaded module. Every operation throws `PluginThrew` when the plug-in lets one out.
class Vst3Factory
{
  public:
    /// Takes over the reference and looks for the factory's newer interfaces.
    explicit Vst3Factory(IPluginFactory* factory);

    /// The audio module classes; `ids` receives theirs, in the same order.
    Vst3Description Describe(std::vector<Uid>& ids);
    /// Creates, initialises, terminates and releases one component. Gives the reason why it cannot be had.
    std::optional<PluginFailure> CreateAndRelease(const Uid& id);
    void Release();

  private:
    bool DescribeClass(std::int32_t index, Uid& id, Vst3Class& found);
    bool TakeClassW(std::int32_t index, Uid& id, Vst3Class& found);
    bool TakeClass2(std::int32_t index, Uid& id, Vst3Class& found);
    bool TakeClass1(std::int32_t index, Uid& id, Vst3Class& found);

    Vst3Object<IPluginFactory> factory;
    Vst3Object<IPluginFactory2> factory2;
    Vst3Object<IPluginFactory3> factory3;
};

} // namespace zetaudiopluginhost::vst3
