// Installed programs to choose from, by name, narrowed by what is searched for. Main thread.
#pragma once

#include "Platform/RunningApplication.h"

#include <QAbstractListModel>
#include <QHash>
#include <QIcon>
#include <QList>
#include <QStringList>

namespace orvane {

class OrvaAppListModel final : public QAbstractListModel {
public:
    enum Role {
        /// That it was chosen before; or the identifier, where it has to tell programs of one name apart.
        detailRole = Qt::UserRole,
    };

    /// `present` are the identifiers of programs that were chosen before.
    explicit OrvaAppListModel(QList<InstalledApplication> applications, QStringList present = {});

    /// Leaves those whose name or identifier holds every word of the query, however it is written.
    void setQuery(const QString& query);

    [[nodiscard]] bool isEmptyWithoutQuery() const { return m_all.isEmpty(); }
    [[nodiscard]] const InstalledApplication& at(int row) const { return m_shown.at(row); }
    /// A program without identifier can't be chosen, nor one that was chosen before.
    [[nodiscard]] bool isAcceptable(int row) const
    {
        return m_shown.at(row).bundleIdentifier && !isPresent(m_shown.at(row));
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    [[nodiscard]] QIcon icon(const QString& name) const;
    [[nodiscard]] bool isPresent(const InstalledApplication& application) const
    {
        return application.bundleIdentifier && m_present.contains(*application.bundleIdentifier);
    }

    QStringList m_present;
    QList<InstalledApplication> m_all;
    QList<InstalledApplication> m_shown;
    QHash<QString, int> m_namesakes;
    mutable QHash<QString, QIcon> m_icons; // read from the disk when first shown
};

} // namespace orvane
