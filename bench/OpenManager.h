#pragma once

#include <exception>
#include <functional>

#include <QLineEdit>
#include <QTableView>

#include "PaintWatch.h"

namespace bench {

/// The open plug-in manager and its parts. It is opened as a host does it.
class OpenManager
{
  public:
    /// Opens the manager on the registry, which must have so many rows to show, sorted by name. When all rows
    /// are there and painted, it calls `use`, and closes the manager with OK. Returns the milliseconds from
    /// the call until the window was painted. Throws what `use` throws.
    static double Run(int rows, const std::function<void(OpenManager&)>& use = {});

    QTableView& List() const { return *list; }
    QLineEdit& FindBox() const;
    PaintWatch& Watch() { return watch; }

  private:
    explicit OpenManager(int rows, const std::function<void(OpenManager&)>& use);
    void Use();
    void Close() const;

    int rows;
    const std::function<void(OpenManager&)>& use;
    QTableView* list = nullptr;
    double opened = 0;
    std::function<double()> elapsed;
    std::exception_ptr error;
    PaintWatch watch;
};

} // namespace bench
