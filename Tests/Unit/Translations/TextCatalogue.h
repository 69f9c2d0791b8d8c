// A catalogue as Qt Linguist keeps it, read for tests.
#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <string>
#include <tuple>

namespace orvane {

struct TextKey {
    QString context;
    QString source;
    QString comment;

    friend bool operator<(const TextKey& a, const TextKey& b)
    {
        return std::tie(a.context, a.source, a.comment) < std::tie(b.context, b.source, b.comment);
    }
    [[nodiscard]] std::string text() const { return context.toStdString() + ": " + source.toStdString(); }
};

struct CatalogueText {
    /// One, or one for each plural form; none where the text isn't translated.
    QStringList translations;
    bool isFinished = false;
};

using TextCatalogue = QMap<TextKey, CatalogueText>;

/// Fails the test, and is empty, where the file can't be read.
[[nodiscard]] TextCatalogue readCatalogue(const QString& path);

} // namespace orvane
