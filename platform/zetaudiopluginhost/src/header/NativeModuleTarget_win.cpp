#include "header/ModuleFileHeader.h"

namespace zetaudiopluginhost {

ModuleTarget NativeModuleTarget()
{
    return {ModuleFormat::Pe, ModuleMachine::X86_64};
}

} // namespace zetaudiopluginhost
