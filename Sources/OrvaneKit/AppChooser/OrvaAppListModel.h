// Installed programs to choose from, by name, narrowed by a query. Main thread.
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
        /// The note that it was chosen before; or the identifier, where two programs have one name.
        detailRole = Qt::UserRole,
    };

    /// `present` are the identifiers of programs that were chosen before.
    explicit OrvaAppListModel(QList<InstalledApplication> applications, QStringList present = {});

    /// Keeps the programs whose name or identifier contains every word of the query, ignoring case and
    /// accents.
    void setQuery(const QString& query);

    [[nodiscard]] bool isEmptyWithoutQuery() const { return m_all.isEmpty(); }
    [[nodiscard]] const InstalledApplication& at(int row) const { return m_shown.at(row); }
    /// A program without an identifier can't be chosen, and neither can one that was chosen before.
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
