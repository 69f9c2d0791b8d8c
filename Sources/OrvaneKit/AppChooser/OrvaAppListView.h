// The list of programs in the chooser.
#pragma once

#include "OrvaneKit/AppChooser/OrvaAppListModel.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QListView>

namespace orvane {

class OrvaAppListView final : public OrvaThemed<QListView> {
public:
    explicit OrvaAppListView(OrvaAppListModel& model);

    /// Returns the marked program if it may be accepted.
    [[nodiscard]] std::optional<InstalledApplication> chosen() const;
    /// Marks the first program that may be accepted, or none.
    void chooseFirst();
    void chooseNone();
    bool choose(const InstalledApplication& application);
    /// Moves by this many programs down, or up, skipping those that can't be accepted, and stops at the ends.
    void move(int steps);
    [[nodiscard]] int programsInSight() const;

protected:
    void themeChanged() override;
    void focusInEvent(QFocusEvent* event) override;

private:
    void mark(int row);

    OrvaAppListModel& m_model;
};

} // namespace orvane
