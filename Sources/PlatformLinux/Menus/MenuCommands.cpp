#include "PlatformLinux/Menus/MenuCommands.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPlainTextEdit>
#include <QTextDocument>
#include <QTextEdit>

#include <algorithm>
#include <array>

namespace orvane::menuCommands {

namespace {

enum class Edit { undo, redo, cut, copy, paste, selectAll };

struct EditCommand {
    QStringView selector;
    Edit edit;
    /// The slot of a widget that has the command.
    const char* slot;
};

constexpr std::array editCommands = {
    EditCommand{u"undo:", Edit::undo, "undo"},    EditCommand{u"redo:", Edit::redo, "redo"},
    EditCommand{u"cut:", Edit::cut, "cut"},       EditCommand{u"copy:", Edit::copy, "copy"},
    EditCommand{u"paste:", Edit::paste, "paste"}, EditCommand{u"selectAll:", Edit::selectAll, "selectAll"},
};

const EditCommand* editCommand(QStringView selector)
{
    const auto found = std::ranges::find(editCommands, selector, &EditCommand::selector);
    return found == editCommands.end() ? nullptr : &*found;
}

bool canEdit(const QLineEdit& line, Edit edit)
{
    const bool isPlain = line.echoMode() == QLineEdit::Normal;
    switch (edit) {
    case Edit::undo:
        return !line.isReadOnly() && line.isUndoAvailable();
    case Edit::redo:
        return !line.isReadOnly() && line.isRedoAvailable();
    case Edit::cut:
        return !line.isReadOnly() && line.hasSelectedText() && isPlain;
    case Edit::copy:
        return line.hasSelectedText() && isPlain;
    case Edit::paste:
        return !line.isReadOnly();
    case Edit::selectAll:
        return !line.text().isEmpty();
    }
    return false;
}

template <typename TextEdit>
bool canEditText(const TextEdit& text, Edit edit)
{
    switch (edit) {
    case Edit::undo:
        return !text.isReadOnly() && text.document()->isUndoAvailable();
    case Edit::redo:
        return !text.isReadOnly() && text.document()->isRedoAvailable();
    case Edit::cut:
        return !text.isReadOnly() && text.textCursor().hasSelection();
    case Edit::copy:
        return text.textCursor().hasSelection();
    case Edit::paste:
        return text.canPaste();
    case Edit::selectAll:
        return !text.document()->isEmpty();
    }
    return false;
}

bool canEdit(const QLabel& label, Edit edit)
{
    constexpr auto selectable = Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard;
    if (edit == Edit::copy)
        return label.hasSelectedText();
    return edit == Edit::selectAll && (label.textInteractionFlags() & selectable) && !label.text().isEmpty();
}

void edit(QLabel& label, Edit edit)
{
    if (edit == Edit::copy)
        QApplication::clipboard()->setText(label.selectedText());
    else
        label.setSelection(0, static_cast<int>(label.text().size()));
}

QMetaMethod slotOf(const QWidget& widget, const EditCommand& command)
{
    const QByteArray signature = QByteArray(command.slot) + "()";
    return widget.metaObject()->method(widget.metaObject()->indexOfSlot(signature.constData()));
}

bool takes(const QWidget& widget, const EditCommand& command)
{
    if (!widget.isEnabled())
        return false;
    if (const auto* line = qobject_cast<const QLineEdit*>(&widget))
        return canEdit(*line, command.edit);
    if (const auto* text = qobject_cast<const QTextEdit*>(&widget))
        return canEditText(*text, command.edit);
    if (const auto* text = qobject_cast<const QPlainTextEdit*>(&widget))
        return canEditText(*text, command.edit);
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return canEdit(*label, command.edit);
    return slotOf(widget, command).isValid();
}

/// In spin boxes and editable combo boxes the focus is on them and not on their line edit.
QWidget* editorOf(QWidget& widget)
{
    for (auto* line : widget.findChildren<QLineEdit*>(Qt::FindDirectChildrenOnly)) {
        if (line->focusProxy() == &widget)
            return line;
    }
    return &widget;
}

QWidget* taker(const EditCommand& command)
{
    QWidget* widget = QApplication::focusWidget();
    if (!widget)
        return nullptr;
    for (widget = editorOf(*widget); widget; widget = widget->isWindow() ? nullptr : widget->parentWidget()) {
        if (takes(*widget, command))
            return widget;
    }
    return nullptr;
}

bool canMinimize(const QWidget& window)
{
    const bool saysWhich = window.windowFlags().testFlag(Qt::CustomizeWindowHint);
    return window.windowType() == Qt::Window &&
           (!saysWhich || window.windowFlags().testFlag(Qt::WindowMinimizeButtonHint));
}

} // namespace

bool isTaken(QStringView selector)
{
    if (const auto* command = editCommand(selector))
        return taker(*command) != nullptr;
    const QWidget* window = QApplication::activeWindow();
    if (selector == u"performClose:")
        return window != nullptr;
    return selector == u"performMiniaturize:" && window && canMinimize(*window);
}

bool send(QStringView selector)
{
    if (const auto* command = editCommand(selector)) {
        QWidget* widget = taker(*command);
        if (!widget)
            return false;
        if (auto* label = qobject_cast<QLabel*>(widget))
            edit(*label, command->edit);
        else
            slotOf(*widget, *command).invoke(widget);
        return true;
    }
    if (!isTaken(selector))
        return false;
    QWidget* window = QApplication::activeWindow();
    if (selector == u"performClose:")
        window->close();
    else
        window->showMinimized();
    return true;
}

} // namespace orvane::menuCommands
