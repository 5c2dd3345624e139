#pragma once

#include <memory>
#include <string>
#include <vector>

#include <zetui/utility/ResourceManager.h>

namespace zetaudiopluginhostui {

/// A layout archive of the manager dialog that a test changes as a host's designer may. It begins as the
/// module's own archive for the skin in use. Nodes are named by their ids. Throws `std::runtime_error` for an
/// id that no node has.
class DialogArchive : public zetui::utility::ResourceManager
{
  public:
    DialogArchive();
    ~DialogArchive() override;

    /// Removes the node with all nodes below it.
    void Remove(const std::string& id);
    void Rename(const std::string& id, const std::string& newId);
    /// The node is made by its adapter, unless the dialog makes one of the class name.
    void SetClass(const std::string& id, const std::string& adapter, const std::string& className);
    void SetText(const std::string& id, const std::string& text);
    void SetVisible(const std::string& id, bool visible);

    std::vector<unsigned char> LoadResource(const std::string& name, const std::string& type) const override;

  private:
    struct Document;
    std::unique_ptr<Document> document;
};

} // namespace zetaudiopluginhostui
