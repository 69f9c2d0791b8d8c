#include "Capabilities/ImageResizer/ResizerView.h"

#include "Capabilities/ImageResizer/ImageResizerText.h"
#include "Capabilities/ImageResizer/ResizerModel.h"
#include "Capabilities/ImageResizer/ResizerRows.h"
#include "OrvaneKit/Model/OrvaBindings.h"
#include "OrvaneKit/Model/OrvaBox.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Model/OrvaPage.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QProgressBar>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

namespace orvane {

namespace {

constexpr QMargins footerMargins{26, 10, 26, 16};
constexpr int barHeight = 8;

using Model = std::shared_ptr<ResizerModel>;

Live<bool> canResize(const Model& model)
{
    return Live<bool>([model] { return !model->isWorking.get() && !model->files.get().isEmpty(); },
                      {std::shared_ptr<ObservableObject>(model, &model->isWorking),
                       std::shared_ptr<ObservableObject>(model, &model->files)});
}

QString resizeTitle(const QList<QUrl>& files)
{
    const int count = static_cast<int>(files.size());
    return count == 1 ? ImageResizerText::tr("Resize %n Image", nullptr, count)
                      : ImageResizerText::tr("Resize %n Images", nullptr, count);
}

AnyView statusLine(const Model& model)
{
    const auto isThere = [](const std::optional<QString>& status) { return status.has_value(); };
    const auto text = [](const std::optional<QString>& status) { return status.value_or(QString()); };
    return OrvaIf{live(model, &ResizerModel::status, isThere),
                  OrvaText{.text = live(model, &ResizerModel::status, text),
                           .font = OrvaFont::callout,
                           .color = OrvaColor::secondary}};
}

AnyView progressLine(const Model& model)
{
    const auto count = [](const ResizerModel::Progress& progress) {
        return ImageResizerText::tr("%1 of %2").arg(progress.done).arg(progress.total);
    };
    const auto same = [](bool isWorking) { return isWorking; };
    return OrvaIf{live(model, &ResizerModel::isWorking, same),
                  OrvaBox{.spacing = 10,
                          .content = {OrvaBoxPart::filling(ResizerProgressBar{model}),
                                      OrvaText{.text = live(model, &ResizerModel::progress, count),
                                               .font = OrvaFont::caption,
                                               .color = OrvaColor::secondary},
                                      OrvaButton{.title = ImageResizerText::tr("Cancel"),
                                                 .action = [model] { model->cancel(); }}}}};
}

AnyView buttonLine(const Model& model)
{
    return OrvaBox{.spacing = 10,
                   .content = {OrvaButton{.title = ImageResizerText::tr("Clear"),
                                          .action = [model] { model->clear(); },
                                          .enabled = canResize(model)},
                               OrvaBoxPart::rest(1),
                               OrvaButton{.title = live(model, &ResizerModel::files, resizeTitle),
                                          .action = [model] { model->resizeAll(); },
                                          .enabled = canResize(model)}}};
}

/// Tells the observable that a drag is over it, and the model what is dropped.
class DropTarget final : public OrvaThemed<QWidget> {
public:
    explicit DropTarget(const ResizerView& view) : m_view(view)
    {
        setAcceptDrops(true);
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        layout->addWidget(view.page().makeWidget(), 1);
        layout->addWidget(view.footer().makeWidget());
    }

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), orvaColor(OrvaColor::window)); }

    void dragEnterEvent(QDragEnterEvent* event) override
    {
        if (!takes(*event))
            return;
        m_view.targeted->set(true);
    }
    void dragMoveEvent(QDragMoveEvent* event) override { takes(*event); }
    void dragLeaveEvent(QDragLeaveEvent*) override { m_view.targeted->set(false); }
    void dropEvent(QDropEvent* event) override
    {
        m_view.targeted->set(false);
        if (takes(*event))
            m_view.model->add(event->mimeData()->urls());
    }

private:
    /// The files stay where they are, whatever the other side proposes.
    static bool takes(QDropEvent& event)
    {
        // A browser offers the address of a picture, which is no file.
        if (!std::ranges::any_of(event.mimeData()->urls(), &QUrl::isLocalFile) ||
            !event.possibleActions().testFlag(Qt::CopyAction))
            return false;
        event.setDropAction(Qt::CopyAction);
        event.accept();
        return true;
    }

    ResizerView m_view;
};

class ProgressBarView final : public QProgressBar {
public:
    explicit ProgressBarView(const Model& model)
    {
        setTextVisible(false);
        setFixedHeight(barHeight);
        setAccessibleName(ImageResizerText::tr("Resizing"));
        m_progress = model->progress.subscribe([this](const ResizerModel::Progress& progress) {
            setRange(0, std::max(progress.total, 1));
            setValue(progress.done);
        });
    }

private:
    Subscription m_progress;
};

} // namespace

AnyView ResizerView::page() const
{
    const auto& settings = model->settings();
    return OrvaPage{.content =
                        OrvaPane{{ResizerDropZone{model, targeted},
                                  section(ImageResizerText::tr("Resize to"),
                                          QStringLiteral("arrow.down.right.and.arrow.up.left"),
                                          ResizerRows::size(settings)),
                                  section(ImageResizerText::tr("Format"), QStringLiteral("photo"),
                                          {ResizerRows::format(settings), ResizerRows::quality(settings)})}}};
}

AnyView ResizerView::footer() const
{
    return OrvaBox{.axis = OrvaBox::Axis::column,
                   .spacing = 8,
                   .margins = footerMargins,
                   .content = {statusLine(model), progressLine(model), buttonLine(model)}};
}

QWidget* makeOrvaWidget(const ResizerView& view)
{
    return new DropTarget(view);
}

QWidget* makeOrvaWidget(const ResizerProgressBar& bar)
{
    return new ProgressBarView(bar.model);
}

} // namespace orvane
