#include <zetui/dialogs/ProgressPresentation.h>

#include <utility>

#include <zetui/dialogs/TerminalPresentation.h>

namespace zetui::dialogs {

namespace {

std::shared_ptr<Presentation>& Installed()
{
    static std::shared_ptr<Presentation> presentation;
    return presentation;
}

} // namespace

ProgressPresentation::~ProgressPresentation() = default;

Presentation::~Presentation() = default;

std::shared_ptr<Presentation> GetPresentation()
{
    if (!Installed())
        Installed() = std::make_shared<TerminalPresentation>(stderr);
    return Installed();
}

void SetPresentation(std::shared_ptr<Presentation> presentation)
{
    Installed() = std::move(presentation);
}

} // namespace zetui::dialogs
