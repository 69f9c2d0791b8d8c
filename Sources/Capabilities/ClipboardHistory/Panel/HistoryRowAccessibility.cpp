#include "Capabilities/ClipboardHistory/Panel/HistoryRowAccessibility.h"

#include "Capabilities/ClipboardHistory/ClipboardHistoryText.h"
#include "Capabilities/ClipboardHistory/Panel/HistoryListView.h"

#include <QAccessibleWidget>
#include <QPointer>

namespace orvane {

namespace {

/// A row, known by its index; a change of the list ends it.
class AccessibleRow final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    AccessibleRow(HistoryListView& list, int row) : m_list(&list), m_row(row) {}

    [[nodiscard]] bool isValid() const override { return m_list && m_row < m_list->rowCount(); }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override
    {
        return QAccessible::queryAccessibleInterface(m_list.data());
    }
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::ListItem; }
    void setText(QAccessible::Text, const QString&) override {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        if (!isValid())
            return {};
        const HistoryRow& row = m_list->row(m_row);
        if (kind == QAccessible::Name)
            return QString(row.preview).replace(QChar::LineSeparator, u' ');
        if (kind == QAccessible::Description)
            return row.isPinned ? ClipboardHistoryText::tr("Pinned %1").arg(row.source) : row.source;
        return {};
    }

    [[nodiscard]] QRect rect() const override
    {
        if (!isValid())
            return {};
        const QRect rect = m_list->rowRect(m_row);
        return QRect(m_list->viewport()->mapToGlobal(rect.topLeft()), rect.size());
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state;
        state.invalid = !isValid();
        if (state.invalid)
            return state;
        state.focusable = true;
        state.focused = m_list->focusedRow() == m_row;
        state.offscreen = !m_list->viewport()->rect().intersects(m_list->rowRect(m_row));
        state.invisible = !m_list->isVisible();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

    [[nodiscard]] QStringList actionNames() const override
    {
        return {pressAction(), showMenuAction(), setFocusAction()};
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }
    void doAction(const QString& name) override
    {
        if (!isValid())
            return;
        const QPointer<HistoryListView> list = m_list; // the call may end this object
        const int row = m_row;
        if (name == pressAction())
            list->press(row);
        else if (name == showMenuAction())
            list->openMenu(row, rect().center());
        else if (name == setFocusAction())
            list->focusRow(row);
    }

private:
    QPointer<HistoryListView> m_list;
    int m_row;
};

class AccessibleList final : public QAccessibleWidget {
public:
    explicit AccessibleList(HistoryListView& list) : QAccessibleWidget(&list, QAccessible::List), m_list(list)
    {
    }
    ~AccessibleList() override { forgetRows(); }

    [[nodiscard]] int childCount() const override { return m_list.rowCount(); }
    [[nodiscard]] QAccessibleInterface* child(int row) const override
    {
        if (row < 0 || row >= m_list.rowCount())
            return nullptr;
        if (const auto known = m_rows.constFind(row); known != m_rows.constEnd())
            return QAccessible::accessibleInterface(*known);
        auto* made = new AccessibleRow(m_list, row);
        m_rows.insert(row, QAccessible::registerAccessibleInterface(made));
        return made;
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override
    {
        for (auto known = m_rows.constBegin(); known != m_rows.constEnd(); ++known) {
            if (QAccessible::accessibleInterface(known.value()) == child)
                return known.key();
        }
        return -1;
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override
    {
        return child(m_list.rowAt(m_list.viewport()->mapFromGlobal(QPoint(x, y))));
    }
    [[nodiscard]] QAccessibleInterface* focusChild() const override { return child(m_list.focusedRow()); }

    void forgetRows()
    {
        const auto rows = std::exchange(m_rows, {});
        for (const QAccessible::Id id : rows)
            QAccessible::deleteAccessibleInterface(id);
    }

private:
    HistoryListView& m_list;
    mutable QHash<int, QAccessible::Id> m_rows; // those that were asked for
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object)
{
    auto* list = dynamic_cast<HistoryListView*>(object);
    return list ? new AccessibleList(*list) : nullptr;
}

} // namespace

void installHistoryAccessibility()
{
    static const bool installed = (QAccessible::installFactory(makeAccessible), true);
    Q_UNUSED(installed)
}

void announceHistoryRowsChanged(HistoryListView& list)
{
    if (!QAccessible::isActive())
        return;
    if (auto* known = dynamic_cast<AccessibleList*>(QAccessible::queryAccessibleInterface(&list)))
        known->forgetRows();
    QAccessibleEvent event(&list, QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&event);
}

void announceHistoryRowFocused(HistoryListView& list, int row)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleEvent event(&list, QAccessible::Focus);
    event.setChild(row);
    QAccessible::updateAccessibility(&event);
}

} // namespace orvane
