// One row of the history's panel: its content, its height and its look.
#pragma once

#include "Capabilities/ClipboardHistory/Store/ClipItem.h"

#include <QFont>
#include <QImage>
#include <QRect>
#include <QString>

class QPainter;

namespace orvane {

/// The part of an entry that a row shows. Small, however long the entry is.
struct HistoryRow {
    explicit HistoryRow(const ClipItem& item);

    QString symbol;
    /// Lines separated by QChar::LineSeparator, without empty ones; no more of it than fits in two lines.
    QString preview;
    QString source; // empty where it isn't known
    bool isPinned;
};

/// Fonts and measures of all rows, for the application's font at the time when this is made.
class HistoryRowLook {
public:
    /// In points.
    static constexpr int paddingH = 10;
    static constexpr int paddingV = 8;
    static constexpr int iconSide = 28;
    static constexpr int divider = 1; // under each row, part of its height

    enum class State { plain, hovered, pressed };
    enum class FocusRing { hidden, shown };
    struct Icon {
        /// Null where the symbol is shown.
        QImage thumbnail;
        /// True while a picture is being read: neither it nor the symbol is shown.
        bool isLoading = false;
    };

    HistoryRowLook();

    [[nodiscard]] int height(const HistoryRow& row, int width) const;
    /// Returns the height without measuring the text's width: right for most rows.
    [[nodiscard]] int likelyHeight(const ClipItem& item) const;
    void paint(QPainter& painter, const QRect& rect, Qt::LayoutDirection direction, const HistoryRow& row,
               const Icon& icon, State state, FocusRing ring) const;

    /// Returns at most two lines of the preview, `room` points wide; the second ends with an ellipsis where
    /// there is more.
    [[nodiscard]] QStringList lines(const HistoryRow& row, int room) const;
    /// Returns the width that is left for a row's text.
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
