#pragma once

namespace zettestplugin {

/// True when the host has entered the module, as the platform demands before it asks for the factory.
bool ModuleIsEntered() noexcept;

} // namespace zettestplugin
