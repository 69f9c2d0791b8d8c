#include "Unit/Pages/LongTexts.h"

#include <QByteArrayView>

namespace orvane::tests {

QString LongTexts::translate(const char* context, const char* sourceText, const char*, int) const
{
    const QString text = QString::fromUtf8(sourceText);
    return QByteArrayView(context) == "KeyText" ? text : lengthened(text);
}

QString LongTexts::lengthened(const QString& text)
{
    static const QString words = QStringLiteral("und so weiter bis es lang genug ist ");
    const qsizetype more = (text.size() + 1) / 2;
    QString filler = words.repeated(static_cast<int>(more / words.size()) + 1).left(more);
    if (filler.endsWith(u' '))
        filler.back() = u'x';
    // One word becomes one longer word, which nothing breaks.
    const bool isOneWord = !text.contains(u' ');
    if (isOneWord)
        filler.remove(u' ');
    return text + (isOneWord ? QString() : QStringLiteral(" ")) + filler;
}

} // namespace orvane::tests
