// Reads the texts that a test has put into pictures. Any thread.
#pragma once

#include "Platform/TextRecognition.h"

#include <QMap>

#include <mutex>

namespace orvane {

class FakeTextRecognition : public TextRecognition {
public:
    [[nodiscard]] Languages languages() override;
    void prepare(std::stop_token stop) override;
    [[nodiscard]] std::optional<QStringList> recognize(const Image& image, std::stop_token stop) override;

    /// Puts a text into the picture with these pixels; pictures without one have `anyLines`.
    void add(const QByteArray& pixels, const QStringList& lines);
    void setLanguages(const Languages& languages);
    /// Nothing to let every reading fail.
    void setAnyLines(const std::optional<QStringList>& lines);

    [[nodiscard]] int preparations() const;
    /// Returns the pictures that were to be read.
    [[nodiscard]] QList<Image> images() const;

private:
    mutable std::mutex m_mutex;
    Languages m_languages{{QStringLiteral("English")}, {}};
    std::optional<QStringList> m_anyLines = QStringList();
    QMap<QByteArray, QStringList> m_texts;
    QList<Image> m_images;
    int m_preparations = 0;
};

} // namespace orvane
