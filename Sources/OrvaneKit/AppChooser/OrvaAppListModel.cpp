#include "OrvaneKit/AppChooser/OrvaAppListModel.h"

#include "OrvaneKit/Model/KitText.h"

#include <QCollator>

#include <algorithm>

namespace orvane {

namespace {

bool matches(const InstalledApplication& application, const QStringList& words)
{
    const QString identifier = application.bundleIdentifier.value_or(QString());
    return std::all_of(words.begin(), words.end(), [&](const QString& word) {
        return application.localizedName.contains(word, Qt::CaseInsensitive) ||
               identifier.contains(word, Qt::CaseInsensitive);
    });
}

} // namespace

OrvaAppListModel::OrvaAppListModel(QList<InstalledApplication> applications, QStringList present)
    : m_present(std::move(present)), m_all(std::move(applications))
{
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    collator.setNumericMode(true);
    std::stable_sort(m_all.begin(), m_all.end(), [&collator](const auto& a, const auto& b) {
        return collator.compare(a.localizedName, b.localizedName) < 0;
    });
    for (const InstalledApplication& application : m_all)
        ++m_namesakes[application.localizedName];
    m_shown = m_all;
}

void OrvaAppListModel::setQuery(const QString& query)
{
    const QStringList words = query.simplified().split(u' ', Qt::SkipEmptyParts);
    beginResetModel();
    m_shown.clear();
    std::copy_if(m_all.begin(), m_all.end(), std::back_inserter(m_shown),
                 [&words](const auto& application) { return matches(application, words); });
    endResetModel();
}

int OrvaAppListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_shown.size());
}

QVariant OrvaAppListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_shown.size())
        return {};
    const InstalledApplication& application = m_shown.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return application.localizedName;
    case Qt::DecorationRole:
        return icon(application.iconName);
    case Qt::ToolTipRole:
        if (isPresent(application))
            return KitText::tr("%1 is on the list already.").arg(application.localizedName);
        return application.bundleIdentifier
                   ? QString()
                   : KitText::tr("This application has no identifier, so it can't be chosen.");
    case Qt::AccessibleDescriptionRole:
        return data(index, Qt::ToolTipRole);
    case detailRole:
        if (isPresent(application))
            return KitText::tr("Added");
        return m_namesakes.value(application.localizedName) > 1
                   ? application.bundleIdentifier.value_or(QString())
                   : QString();
    default:
        return {};
    }
}

Qt::ItemFlags OrvaAppListModel::flags(const QModelIndex& index) const
{
    if (!index.isValid() || !isAcceptable(index.row()))
        return Qt::ItemNeverHasChildren;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

QIcon OrvaAppListModel::icon(const QString& name) const
{
    auto known = m_icons.constFind(name);
    if (known == m_icons.constEnd())
        known = m_icons.insert(name, name.startsWith(u'/') ? QIcon(name) : QIcon::fromTheme(name));
    return *known;
}

} // namespace orvane
