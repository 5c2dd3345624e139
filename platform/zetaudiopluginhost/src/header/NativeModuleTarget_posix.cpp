#include "header/ModuleFileHeader.h"

namespace zetaudiopluginhost {

#if defined(__aarch64__)
constexpr ModuleMachine nativeMachine = ModuleMachine::AArch64;
#else
constexpr ModuleMachine nativeMachine = ModuleMachine::X86_64;
#endif

ModuleTarget NativeModuleTarget()
{
    return {ModuleFormat::Elf, nativeMachine};
}

} // namespace zetaudiopluginhost
