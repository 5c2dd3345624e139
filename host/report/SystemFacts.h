#pragma once

#include <string>
#include <vector>

/// Facts about the system, and about the account that the program runs in. Any thread.
namespace zetaudiopluginmanager {

/// The system's name and version, for people (UTF-8): "Debian GNU/Linux 12 (bookworm), Linux 6.1.0, x86_64".
std::string DescribeSystem();

/// Every path by which the home folder is known, some perhaps twice.
std::vector<std::wstring> HomeFolders();
/// Every name that the account has, some perhaps twice.
std::vector<std::wstring> AccountNames();

} // namespace zetaudiopluginmanager
