#pragma once

#include <utility>

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QWidget>

namespace zetaudiopluginhostui {

/// Counts how often a list is filled while it lives, that is, how often its rows are taken out.
class FillCount
{
  public:
    explicit FillCount(const QWidget& list)
    {
        const QAbstractItemModel* const model = dynamic_cast<const QAbstractItemView&>(list).model();
        connection = QObject::connect(model, &QAbstractItemModel::modelReset,
                                      [this, model] { ++(model->rowCount() == 0 ? emptied : shown); });
    }
    ~FillCount() { QObject::disconnect(connection); }
    FillCount(const FillCount&) = delete;
    FillCount& operator=(const FillCount&) = delete;

    /// The count since the last call.
    int Fills()
    {
        shown = 0;
        return std::exchange(emptied, 0);
    }
    /// The number of times since the last call that a fill or a sort put rows into their places.
    int Layouts()
    {
        emptied = 0;
        return std::exchange(shown, 0);
    }

  private:
    QMetaObject::Connection connection;
    int emptied = 0, shown = 0;
};

} // namespace zetaudiopluginhostui
