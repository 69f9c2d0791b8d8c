// The content of the history's panel: a search field, and under it the entries that match. Main thread.
#pragma once

#include "Capabilities/ClipboardHistory/Panel/HistoryViewModel.h"
#include "OrvaneCore/Base/Observable.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QLineEdit>
#include <QWidget>

class QStackedLayout;

namespace orvane {

class HistoryListView;

class HistoryPanelView final : public OrvaThemed<QWidget> {
public:
    /// The model outlives the view.
    explicit HistoryPanelView(HistoryViewModel& model);
    ~HistoryPanelView() override;

    /// Brings the list up to date with its first row on top, and puts the focus into the field. While the
    /// panel is hidden the list isn't updated.
    void prepareForShowing();

    QLineEdit& field() { return *m_field; }
    HistoryListView& list() { return *m_list; }
    [[nodiscard]] bool showsEmptyText() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QWidget* makeSearchRow();
    QWidget* makeEmptyText();
    void followModel();
    void modelChanged();
    void refilter();
    void chooseFirst();

    HistoryViewModel& m_model;
    QLineEdit* m_field = nullptr;
    HistoryListView* m_list;
    QStackedLayout* m_rest; // the list, or the text in its place
    bool m_isStale = true;
    Cancellables m_cancellables;
};

} // namespace orvane
