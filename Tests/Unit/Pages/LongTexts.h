// A language for tests in which every text of this desktop is half as long again.
#pragma once

#include <QString>
#include <QTranslator>

namespace orvane::tests {

class LongTexts final : public QTranslator {
public:
    LongTexts();

    QString translate(const char* context, const char* sourceText, const char* disambiguation,
                      int n) const override;
    [[nodiscard]] bool isEmpty() const override { return false; }

    /// Returns the text with words of half its length after it. Signs of keys stay as they are.
    [[nodiscard]] static QString lengthened(const QString& text);

private:
    QTranslator m_wording;
};

} // namespace orvane::tests
