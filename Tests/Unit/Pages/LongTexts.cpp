#include "Unit/Pages/LongTexts.h"

#include "PlatformLinux/Language/Catalogues.h"

#include <QByteArrayView>

#include <gtest/gtest.h>

namespace orvane::tests {

LongTexts::LongTexts()
{
    // Makes the catalogues known, for a moment.
    const Catalogues catalogues;
    EXPECT_TRUE(m_wording.load(QStringLiteral("orvane_en_linux"), QStringLiteral(":/translations")));
}

QString LongTexts::translate(const char* context, const char* sourceText, const char* disambiguation,
                             int n) const
{
    const QString worded = m_wording.translate(context, sourceText, disambiguation, n);
    const QString text = worded.isEmpty() ? QString::fromUtf8(sourceText) : worded;
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
