#pragma once

#include <exception>
#include <functional>

#include <QLineEdit>
#include <QTableView>

#include "PaintWatch.h"

namespace bench {

/// The plug-in manager as its host opens it, with its parts, while it is open.
class OpenManager
{
  public:
    /// Opens it on the registry, which must have so many rows to show; sorted by name. Once it is painted
    /// with all of them, calls `use`, and closes it with OK. The milliseconds from the call to the painted
    /// window. Throws what `use` throws.
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
