#include "KeyboardShortcuts/Recorder/RecorderAccessibleView.h"

#include "KeyboardShortcuts/KeyboardShortcutsText.h"
#include "KeyboardShortcuts/Recorder/RecorderCocoaView.h"
#include "OrvaneKit/Theme/OrvaAccessible.h"

#include <QAccessibleWidget>

namespace orvane::KeyboardShortcuts {

namespace {

/// A button that is called by its label. Not every screen reader asks for the value of a text, so the value
/// is the description too.
class AccessibleRecorder final : public QAccessibleWidget {
public:
    explicit AccessibleRecorder(RecorderCocoa* recorder) : QAccessibleWidget(recorder, QAccessible::Button) {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        switch (kind) {
        case QAccessible::Value:
        case QAccessible::Description:
            return recorder().spokenValue();
        case QAccessible::Help:
            return KeyboardShortcutsText::tr("Press it to record: the next keys become the shortcut. Escape "
                                             "leaves it as it is, Delete clears it.");
        default:
            return QAccessibleWidget::text(kind);
        }
    }

    [[nodiscard]] QStringList actionNames() const override
    {
        return QStringList{pressAction()} + QAccessibleWidget::actionNames();
    }

    void doAction(const QString& action) override
    {
        if (action == pressAction())
            recorder().makeFirstResponder();
        else
            QAccessibleWidget::doAction(action);
    }

private:
    [[nodiscard]] RecorderCocoa& recorder() const { return static_cast<RecorderCocoa&>(*widget()); }
};

} // namespace

void describeRecorders()
{
    describeWith<RecorderCocoa, AccessibleRecorder>();
}

} // namespace orvane::KeyboardShortcuts
