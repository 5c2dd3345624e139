#pragma once

#include <string>

#include <gtest/gtest.h>
#include <pugixml.hpp>
#include <zetaudiopluginhostui/Module.h>

#include "module/ModuleResources.h"

namespace zetaudiopluginhostui {

inline std::string Scalar(const pugi::xml_node& value)
{
    const std::string type = value.name();
    if (type == "true" || type == "false")
        return type;
    return value.child_value();
}

inline pugi::xml_node ValueOf(const pugi::xml_node& list, const std::string& key)
{
    for (const pugi::xml_node pair : list.children("prop.pair"))
        if (key == pair.child_value("key"))
            return pair.child("key").next_sibling();
    return {};
}

/// The module's layout archives as XML.
class LayoutArchiveFixture : public ::testing::Test
{
  protected:
    LayoutArchiveFixture() { Initialize(); }
    ~LayoutArchiveFixture() override { Terminate(); }

    static void Load(const char* name, pugi::xml_document& document)
    {
        const auto bytes = GetModuleResources()->LoadResource(name, "xml");
        const auto result = document.load_buffer(bytes.data(), bytes.size());
        EXPECT_TRUE(result) << name << ": " << result.description();
    }

    static constexpr const char* archiveNames[] = {"AUDIOPLUGINMANAGER", "AUDIOPLUGINMANAGER.V7"};
};

} // namespace zetaudiopluginhostui
