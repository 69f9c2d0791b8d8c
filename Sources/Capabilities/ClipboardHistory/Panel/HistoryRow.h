// One row of the history's panel: what it says, how high it is, and its look.
#pragma once

#include "Capabilities/ClipboardHistory/Store/ClipItem.h"

#include <QFont>
#include <QImage>
#include <QRect>
#include <QString>

class QPainter;

namespace orvane {

/// What a row shows of an entry. Small, however long the entry is.
struct HistoryRow {
    explicit HistoryRow(const ClipItem& item);

    QString symbol;
    /// Lines parted by QChar::LineSeparator, without empty ones; no more of it than two lines can hold.
    QString preview;
    QString source; // empty where it isn't known
    bool isPinned;
};

/// Fonts and measures of all rows, for the application's font at the time of making.
class HistoryRowLook {
public:
    /// Points.
    static constexpr int paddingH = 10;
    static constexpr int paddingV = 8;
    static constexpr int iconSide = 28;
    static constexpr int divider = 1; // under each row, part of its height

    enum class State { plain, hovered, pressed };
    enum class FocusRing { hidden, shown };
    struct Icon {
        /// Null for the symbol.
        QImage thumbnail;
        /// A picture that is on its way: neither of them.
        bool isLoading = false;
    };

    HistoryRowLook();

    [[nodiscard]] int height(const HistoryRow& row, int width) const;
    /// The height without a look at the text's width: right for most.
    [[nodiscard]] int likelyHeight(const ClipItem& item) const;
    void paint(QPainter& painter, const QRect& rect, Qt::LayoutDirection direction, const HistoryRow& row,
               const Icon& icon, State state, FocusRing ring) const;

    /// At most two lines of the preview, in `room` points; the second ends with an ellipsis where there is
    /// more.
    [[nodiscard]] QStringList lines(const HistoryRow& row, int room) const;
    /// What is left of a row's width for its text.
    [[nodiscard]] int textWidth(const HistoryRow& row, int width) const;

private:
    [[nodiscard]] int heightWith(int lineCount, bool hasSource) const;
    void paintGround(QPainter& painter, const QRect& rect, State state, FocusRing ring) const;
    void paintIcon(QPainter& painter, const QRect& box, const HistoryRow& row, const Icon& icon) const;
    void paintText(QPainter& painter, const QRect& room, Qt::LayoutDirection direction,
                   const HistoryRow& row) const;

    QFont m_previewFont;
    QFont m_sourceFont;
    int m_previewLine; // heights of a line
    int m_sourceLine;
    double m_pinSide;
};

} // namespace orvane
