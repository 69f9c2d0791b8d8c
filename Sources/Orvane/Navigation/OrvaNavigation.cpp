#include "Orvane/Navigation/OrvaNavigation.h"

#include "Orvane/Navigation/OrvaPagesView.h"
#include "Orvane/Navigation/OrvaSidebarView.h"
#include "Orvane/Navigation/OrvaSplitView.h"

#include <QVBoxLayout>

namespace orvane {

QList<AnyView> OrvaKeyed::children() const
{
    const AnyView present = content(key.get());
    return present ? QList<AnyView>{present} : QList<AnyView>{};
}

QWidget* makeOrvaWidget(const OrvaSidebar& sidebar)
{
    return new OrvaSidebarView(sidebar);
}

QWidget* makeOrvaWidget(const OrvaSplit& split)
{
    return new OrvaSplitView(split);
}

QWidget* makeOrvaWidget(const OrvaKeyed& keyed)
{
    return new OrvaKeyedView(keyed);
}

QWidget* makeOrvaWidget(const OrvaTicker& ticker)
{
    return new OrvaTickerView(ticker);
}

QWidget* makeOrvaWidget(const OrvaAppear& appear)
{
    return new OrvaAppearView(appear.onAppear, appear.content);
}

QWidget* makeOrvaWidget(const OrvaAnchor& anchor)
{
    auto* widget = new QWidget;
    widget->setObjectName(anchor.id);
    auto* layout = new QVBoxLayout(widget);
    layout->setContentsMargins(0, 0, 0, 0);
    if (QWidget* content = anchor.content.makeWidget())
        layout->addWidget(content);
    return widget;
}

QWidget* makeOrvaWidget(const OrvaScrollReader& reader)
{
    return new OrvaScrollReaderView(reader);
}

} // namespace orvane
