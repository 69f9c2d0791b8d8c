// A language for tests whose every text is half as long again.
#pragma once

#include <QString>
#include <QTranslator>

namespace orvane::tests {

class LongTexts final : public QTranslator {
public:
    QString translate(const char* context, const char* sourceText, const char* disambiguation,
                      int n) const override;
    [[nodiscard]] bool isEmpty() const override { return false; }

    /// Returns the text with words of half its length after it. Signs of keys stay as they are.
    [[nodiscard]] static QString lengthened(const QString& text);
};

} // namespace orvane::tests
