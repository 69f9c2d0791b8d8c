#include "Orvane/HomeView.h"

#include "Orvane/CapabilityDetailView.h"
#include "OrvaneCore/CapabilityRegistry.h"
#include "OrvaneCore/OrvaSymbol.h"
#include "OrvaneCore/OrvaThemed.h"

#include <QHBoxLayout>
#include <QListWidget>

namespace orvane {

namespace {

constexpr int sidebarWidth = 230;
constexpr double iconSide = 18;

class HomeWindowView : public OrvaThemed<QWidget> {
public:
    explicit HomeWindowView(std::shared_ptr<CapabilityRegistry> registry)
        : m_registry(std::move(registry)), m_list(new QListWidget(this)), m_layout(new QHBoxLayout(this))
    {
        setAutoFillBackground(true);
        m_layout->setContentsMargins(0, 0, 0, 0);
        m_layout->setSpacing(0);
        m_layout->addWidget(m_list);
        m_list->setFixedWidth(sidebarWidth);
        m_list->setFrameShape(QFrame::NoFrame);
        m_list->setUniformItemSizes(true);
        m_list->setAccessibleName(QStringLiteral("Features"));
        for (const CapabilityRegistry::Entry& entry : m_registry->entries())
            m_list->addItem(entry.metadata().displayName);
        themeChanged();
        connect(m_list, &QListWidget::currentRowChanged, this, [this](int row) { showPage(row); });
        m_list->setCurrentRow(0);
    }

protected:
    void themeChanged() override
    {
        for (int row = 0; row < m_list->count(); ++row) {
            const auto& entry = m_registry->entries().at(row);
            const auto picture = [&](const QColor& color) {
                return orvaSymbolPixmap(entry.metadata().symbolName, iconSide, color, devicePixelRatioF());
            };
            QIcon icon(picture(orvaColor(OrvaColor::primary)));
            icon.addPixmap(picture(palette().color(QPalette::HighlightedText)), QIcon::Selected);
            m_list->item(row)->setIcon(icon);
            m_list->item(row)->setSizeHint(QSize(sidebarWidth, 34));
        }
    }

private:
    void showPage(int row)
    {
        delete m_page;
        m_page = nullptr;
        if (row < 0)
            return;
        m_page = CapabilityDetailView::make(m_registry, m_registry->entries().at(row).id()).makeWidget();
        m_layout->addWidget(m_page, 1);
    }

    std::shared_ptr<CapabilityRegistry> m_registry;
    QListWidget* m_list;
    QHBoxLayout* m_layout;
    QWidget* m_page = nullptr;
};

} // namespace

QWidget* makeOrvaWidget(const HomeView& view)
{
    return new HomeWindowView(view.registry);
}

} // namespace orvane
