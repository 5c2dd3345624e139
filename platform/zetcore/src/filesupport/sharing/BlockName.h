#pragma once

#include <cstddef>
#include <string>

#include <zetcore/filesupport/sharing/MemoryMappedFile.h>

namespace zetcore::filesupport {

/// Letters, digits, '-', '_' and dots inside: the same name must do as a file and as a kernel object.
bool IsBlockName(const std::string& name);

/// Says why the arguments of `MemoryMappedFile::Init` are wrong; empty when they are right.
std::string RefuseBlock(const std::string& name, std::size_t size, int flags);

} // namespace zetcore::filesupport
