#include "OpenManager.h"

#include <chrono>
#include <exception>
#include <stdexcept>

#include <QApplication>
#include <QPushButton>

#include <zetaudiopluginhostui/AudioPluginManager.h>

#include "ListData.h"

namespace bench {

namespace {

constexpr unsigned nameColumn = 2;

/// The plug-in list that this widget is the viewport of; null for any other widget.
QTableView* ListOf(const QObject& widget)
{
    auto* const view = qobject_cast<QTableView*>(widget.parent());
    return view && &widget == view->viewport() && view->model() && view->model()->columnCount() == listColumns
               ? view
               : nullptr;
}

} // namespace

OpenManager::OpenManager(int rowCount, const std::function<void(OpenManager&)>& function)
    : rows(rowCount), use(function), watch(
                                         [this](const QObject& widget) {
                                             if (list)
                                                 return &widget == list->viewport();
                                             QTableView* const view = ListOf(widget);
                                             return view && view->model()->rowCount() == rows;
                                         },
                                         [this] {
                                             if (!list)
                                                 Use();
                                         })
{}

double OpenManager::Run(int rows, const std::function<void(OpenManager&)>& use)
{
    using Clock = std::chrono::steady_clock;
    OpenManager manager(rows, use);
    zetaudiopluginhostui::AudioPluginManagerSettings settings;
    settings.sortColumn = nameColumn;
    settings.sortAscending = true;
    const auto start = Clock::now();
    manager.elapsed = [start] {
        return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
    };
    zetaudiopluginhostui::AudioPluginManager::GetInstance().DoPluginManagerDialog(nullptr, settings, nullptr);
    Settle();
    if (manager.error)
        std::rethrow_exception(manager.error);
    return manager.opened;
}

void OpenManager::Use()
{
    opened = elapsed();
    for (QWidget* const widget : QApplication::allWidgets()) {
        if (!list)
            list = ListOf(*widget);
    }
    try {
        Settle();
        if (use)
            use(*this);
    } catch (...) {
        error = std::current_exception();
    }
    Close();
}

QLineEdit& OpenManager::FindBox() const
{
    auto* const box = list->window()->findChild<QLineEdit*>();
    if (!box)
        throw std::runtime_error("the manager has no find box");
    return *box;
}

void OpenManager::Close() const
{
    auto* const button = list->window()->findChild<QPushButton*>(QStringLiteral("OKButton"));
    if (!button)
        throw std::runtime_error("the manager has no OK button");
    button->click();
}

} // namespace bench
