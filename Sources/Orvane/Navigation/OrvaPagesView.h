// Views around a page: one that replaces it, one that ticks while it is visible, one that scrolls it.
#pragma once

#include "Orvane/Navigation/OrvaNavigation.h"

#include <QPointer>
#include <QWidget>

#include <memory>

class QVBoxLayout;

namespace orvane {

class Timer;

/// When a page with the focus is replaced, the new one gets the focus.
class OrvaKeyedView final : public QWidget {
public:
    explicit OrvaKeyedView(const OrvaKeyed& keyed);

private:
    void show(const QString& key);
    void moveFocus() const;

    std::function<AnyView(const QString&)> m_makeContent;
    std::optional<QString> m_key;
    QPointer<QWidget> m_page;
    QVBoxLayout* m_layout;
    Cancellables m_cancellables;
};

/// Takes as much room as its content.
class OrvaAppearView : public QWidget {
public:
    OrvaAppearView(std::function<void()> onAppear, const AnyView& content);

protected:
    virtual void appeared();
    virtual void disappeared() {}

    void showEvent(QShowEvent* event) final;
    void hideEvent(QHideEvent* event) final;

private:
    std::function<void()> m_onAppear;
};

class OrvaTickerView final : public OrvaAppearView {
public:
    explicit OrvaTickerView(const OrvaTicker& ticker);
    ~OrvaTickerView() override;

protected:
    void appeared() override;
    void disappeared() override;

private:
    std::chrono::milliseconds m_interval;
    std::function<void()> m_onTick;
    std::unique_ptr<Timer> m_timer;
};

class OrvaScrollReaderView final : public QWidget {
public:
    explicit OrvaScrollReaderView(const OrvaScrollReader& reader);

private:
    void scroll();

    QString m_anchor;
    Cancellables m_cancellables;
};

} // namespace orvane
