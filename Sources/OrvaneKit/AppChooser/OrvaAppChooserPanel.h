// The window of the chooser: a search field, the list, and the buttons.
#pragma once

#include "OrvaneCore/Base/Observable.h"
#include "OrvaneKit/AppChooser/OrvaAppListModel.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QDialog>

class QStackedWidget;

namespace orvane {

class OrvaAppListView;
class OrvaSearchFieldView;

/// Deletes itself when it is closed. Only a program with an identifier that wasn't chosen before is accepted.
class OrvaAppChooserPanel final : public OrvaThemed<QDialog> {
public:
    struct Programs {
        QList<InstalledApplication> installed;
        /// Identifiers of the programs that were chosen before.
        QStringList present;
    };
    OrvaAppChooserPanel(Programs programs, std::function<void(const QString& bundleID)> accepted,
                        QWidget* parent);
    ~OrvaAppChooserPanel() override;

    void accept() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget* makeList();
    QWidget* makeButtons();
    void search(const QString& query);
    void showQuietText(const QString& query);

    std::function<void(const QString&)> m_accepted;
    OrvaAppListModel m_model;
    std::shared_ptr<Observable<bool>> m_canAccept = std::make_shared<Observable<bool>>(false);
    std::shared_ptr<Observable<QString>> m_quietText = std::make_shared<Observable<QString>>();
    OrvaSearchFieldView* m_field;
    OrvaAppListView* m_list;
    QStackedWidget* m_pages;
    QWidget* m_cancel = nullptr;
};

} // namespace orvane
