#include "Capabilities/ClipboardHistory/Store/ClipItem.h"

#include "Capabilities/ClipboardHistory/ClipboardHistoryText.h"
#include "Capabilities/ClipboardHistory/Store/TextComparison.h"

#include <algorithm>

namespace orvane {

namespace {

// 2001-01-01T00:00:00Z on the clock that counts from 1970.
constexpr std::chrono::seconds referenceDate{978'307'200};

bool equivalent(const std::optional<QString>& left, const std::optional<QString>& right)
{
    if (!left || !right)
        return left.has_value() == right.has_value();
    return TextComparison::canonicallyEquivalent(*left, *right);
}

bool equivalent(const std::optional<QStringList>& left, const std::optional<QStringList>& right)
{
    if (!left || !right)
        return left.has_value() == right.has_value();
    return std::ranges::equal(*left, *right, TextComparison::canonicallyEquivalent);
}

} // namespace

ClipItem::Date ClipItem::dateFrom(std::chrono::system_clock::time_point time)
{
    return time.time_since_epoch() - referenceDate;
}

bool ClipItem::contentEquals(const ClipItem& other) const
{
    return kind == other.kind && equivalent(text, other.text) && equivalent(filePaths, other.filePaths) &&
           equivalent(imageFileName, other.imageFileName);
}

qint64 ClipItem::textBytes() const
{
    qint64 characters = text ? text->size() : 0;
    for (const QString& path : filePaths.value_or(QStringList()))
        characters += path.size();
    return characters * qint64{sizeof(QChar)};
}

QString ClipItem::preview() const
{
    switch (kind) {
    case ClipKind::text:
    case ClipKind::url: {
        const QString trimmed = text.value_or(QString()).trimmed();
        return trimmed.isEmpty() ? QStringLiteral("(empty)") : trimmed;
    }
    case ClipKind::image:
        return ClipboardHistoryText::tr("Image");
    case ClipKind::fileURLs:
        return text ? *text : filePaths.value_or(QStringList()).join(QStringLiteral(", "));
    }
    return {};
}

} // namespace orvane
