// The list of the history's panel beside the toolkit's list view with a delegate that paints the same rows:
// from the entries to the first picture, after a letter of the search, and for a page of scrolling. Runs on
// the offscreen platform, so a picture is what the widget paints, without the desktop.
//   QT_QPA_PLATFORM=offscreen build/release/bin/HistoryListBenchmark
#include "Capabilities/ClipboardHistory/Panel/HistoryListView.h"
#include "Capabilities/ClipboardHistory/Panel/HistoryViewModel.h"
#include "Fakes/FakePlatform.h"

#include <QAbstractListModel>
#include <QApplication>
#include <QImage>
#include <QListView>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include <malloc.h>

#include <memory>

#include <benchmark/benchmark.h>

namespace {

using namespace orvane;

constexpr QSize panel(380, 420);

/// Every third one long enough for two lines, every other one with a source.
QList<ClipItem> entries(qint64 count)
{
    QList<ClipItem> items;
    for (qint64 index = 0; index < count; ++index) {
        QString text = QStringLiteral("Entry number %1").arg(index);
        if (index % 3 == 0)
            text += QStringLiteral(" of a text that goes on for longer than one line of the panel can hold");
        items.append({.id = QUuid::createUuid(), .text = text});
        if (index % 2 == 0)
            items.last().sourceApp = QStringLiteral("org.example.editor");
    }
    return items;
}

class Model final : public QAbstractListModel {
public:
    void setItems(const QList<ClipItem>& items)
    {
        beginResetModel();
        m_items = items;
        endResetModel();
    }
    [[nodiscard]] const ClipItem& at(int row) const { return m_items.at(row); }
    [[nodiscard]] int rowCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_items.size());
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override
    {
        return role == Qt::DisplayRole ? QVariant(m_items.at(index.row()).preview()) : QVariant();
    }

private:
    QList<ClipItem> m_items;
};

enum class Heights { measured, guessed, equal };

class Delegate final : public QStyledItemDelegate {
public:
    Delegate(const Model& model, const QListView& view, Heights heights)
        : m_model(model), m_view(view), m_heights(heights)
    {
    }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const override
    {
        const int width = m_view.viewport()->width();
        const ClipItem& item = m_model.at(index.row());
        return QSize(width, m_heights == Heights::guessed ? m_look.likelyHeight(item)
                                                          : m_look.height(HistoryRow(item), width));
    }
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        m_look.paint(*painter, option.rect, option.direction, HistoryRow(m_model.at(index.row())), {},
                     HistoryRowLook::State::plain, HistoryRowLook::FocusRing::hidden);
    }

private:
    const Model& m_model;
    const QListView& m_view;
    Heights m_heights;
    HistoryRowLook m_look;
};

/// The toolkit's view. With `guessed` heights, and with `equal` ones, for which it asks for the first row's
/// alone, rows of another height are cut off or have a gap.
template <Heights heights>
class StandardList {
public:
    StandardList()
    {
        view.setModel(&model);
        view.setItemDelegate(&delegate);
        view.setVerticalScrollMode(QListView::ScrollPerPixel);
        view.setUniformItemSizes(heights == Heights::equal);
        view.resize(panel);
    }
    void setItems(const QList<ClipItem>& items) { model.setItems(items); }
    QAbstractScrollArea& widget() { return view; }

private:
    Model model;
    QListView view;
    Delegate delegate{model, view, heights};
};

class OwnList {
public:
    OwnList() { view.resize(panel); }
    void setItems(const QList<ClipItem>& items) { view.setItems(items); }
    QAbstractScrollArea& widget() { return view; }

private:
    HistoryViewModel model;
    HistoryListView view{model};
};

class Screen {
public:
    void show(QWidget& widget)
    {
        QCoreApplication::sendPostedEvents();
        widget.render(&m_picture);
    }

private:
    QImage m_picture{panel, QImage::Format_ARGB32_Premultiplied};
};

template <class List>
void firstPicture(benchmark::State& state)
{
    const FakePlatform fake;
    const QList<ClipItem> items = entries(state.range(0));
    Screen screen;
    for (auto _ : state) {
        List list;
        list.setItems(items);
        list.widget().show();
        screen.show(list.widget());
    }
}

template <class List>
void letterOfTheSearch(benchmark::State& state)
{
    const FakePlatform fake;
    const QList<ClipItem> items = entries(state.range(0));
    const QList<ClipItem> found = items.first(items.size() / 2);
    Screen screen;
    List list;
    list.setItems(items);
    list.widget().show();
    screen.show(list.widget());
    bool narrowed = false;
    for (auto _ : state) {
        narrowed = !narrowed;
        list.setItems(narrowed ? found : items);
        screen.show(list.widget());
    }
}

template <class List>
void pageOfScrolling(benchmark::State& state)
{
    const FakePlatform fake;
    Screen screen;
    List list;
    list.setItems(entries(state.range(0)));
    list.widget().show();
    screen.show(list.widget());
    QScrollBar& bar = *list.widget().verticalScrollBar();
    for (auto _ : state) {
        bar.setValue(bar.value() >= bar.maximum() ? 0 : bar.value() + bar.pageStep());
        screen.show(list.widget());
    }
}

/// What a list that is shown holds beside the entries themselves.
template <class List>
void memory(benchmark::State& state)
{
    const FakePlatform fake;
    const QList<ClipItem> items = entries(state.range(0));
    Screen screen;
    for (auto _ : state) {
        const std::size_t before = mallinfo2().uordblks;
        List list;
        list.setItems(items);
        list.widget().show();
        screen.show(list.widget());
        state.counters["bytes"] = static_cast<double>(mallinfo2().uordblks) - static_cast<double>(before);
    }
}

#define ORVANE_LIST_BENCHMARKS(List)                                                                         \
    BENCHMARK(firstPicture<List>)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);                   \
    BENCHMARK(letterOfTheSearch<List>)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);              \
    BENCHMARK(pageOfScrolling<List>)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);                \
    BENCHMARK(memory<List>)->Arg(1'000)->Arg(10'000)->Iterations(1)

ORVANE_LIST_BENCHMARKS(OwnList);
ORVANE_LIST_BENCHMARKS(StandardList<Heights::measured>);
ORVANE_LIST_BENCHMARKS(StandardList<Heights::guessed>);
ORVANE_LIST_BENCHMARKS(StandardList<Heights::equal>);

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
