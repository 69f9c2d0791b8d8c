// Reading of the text in pictures. All calls block, on the disk and on the work itself, for at most a time
// limit of the platform's: any thread but the main one.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>
#include <stop_token>

namespace orvane {

class TextRecognition {
public:
    struct Image {
        int width = 0;
        int height = 0;
        /// Rows from the top without gaps, and four bytes for a pixel: a number 0xFFRRGGBB in the byte order
        /// of the machine.
        QByteArray pixels;
    };

    /// A language of the user's that can't be read yet.
    struct MissingLanguage {
        /// In the language itself, such as "Deutsch".
        QString name;
        /// The package of the system that brings what it takes.
        QString package;
        friend bool operator==(const MissingLanguage&, const MissingLanguage&) = default;
    };

    /// The user's languages are those of the locale and of the keyboard layouts, and English.
    struct Languages {
        /// Names of those that are read, each in the language itself; empty when nothing can be read.
        QStringList inUse;
        QList<MissingLanguage> missing;
        friend bool operator==(const Languages&, const Languages&) = default;
    };

    virtual ~TextRecognition() = default;

    [[nodiscard]] virtual Languages languages() = 0;

    /// Makes ready what takes long, so that a call of recognize() within some seconds is fast. That call may
    /// come before this one has returned.
    virtual void prepare(std::stop_token stop) = 0;

    /// Returns the lines in reading order, without blanks at their ends; none for a picture without text.
    /// Nothing when the picture can't be read: without any language, with a size that doesn't fit the pixels
    /// or is too large, and after a failure or a stop.
    [[nodiscard]] virtual std::optional<QStringList> recognize(const Image& image, std::stop_token stop) = 0;
};

} // namespace orvane
