// A controller of the history on the fake platform, with a separate directory.
#pragma once

#include "Capabilities/ClipboardHistory/Archive/HistoryCodec.h"
#include "Capabilities/ClipboardHistory/ClipboardHistoryController.h"
#include "ClipItems.h"
#include "Fakes/FakePlatform.h"

#include <QBuffer>
#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace orvane::tests {

inline const QString historyID = QStringLiteral("net.lindenrow.orvane.clipboardhistory");

/// Returns a picture of one colour.
inline QByteArray picture(const char* format, QRgb colour = 0xFF3366CC)
{
    QImage image(8, 4, QImage::Format_ARGB32);
    image.fill(colour);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return buffer.data();
}

/// Lets the fake platform convert pictures by the toolkit's readers.
inline void convertByToolkit(FakePlatform& fake)
{
    fake.pictures.toPng = [](const QByteArray& bytes, Pictures::Foreign format) -> std::optional<QByteArray> {
        const char* const name = format == Pictures::Foreign::bmp    ? "BMP"
                                 : format == Pictures::Foreign::jpeg ? "JPEG"
                                                                     : "TIFF";
        const QImage image = QImage::fromData(bytes, name);
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        return image.save(&buffer, "PNG") ? std::optional(buffer.data()) : std::nullopt;
    };
}

inline QStringList texts(const QList<ClipItem>& items)
{
    QStringList result;
    for (const ClipItem& item : items)
        result.append(item.text.value_or(QStringLiteral("<none>")));
    return result;
}

class HistoryFixture : public ::testing::Test {
protected:
    HistoryFixture()
    {
        fake.permissions.accessibility = true;
        convertByToolkit(fake);
    }

    /// Runs tasks and pool work by turns until nothing is left to do.
    void settle()
    {
        for (int turn = 0; turn < 20; ++turn) {
            fake.runLoop.drain();
            fake.runLoop.drainDetached();
        }
        fake.runLoop.drain();
    }
    void copy(const QMap<QString, QByteArray>& data, const QStringList& furtherTypes = {})
    {
        fake.generalPasteboard.copy({.types = furtherTypes, .data = data});
    }
    void copyFiles(const QStringList& paths)
    {
        PasteboardContents contents;
        for (const QString& path : paths)
            contents.fileURLs.append(QUrl::fromLocalFile(path));
        fake.generalPasteboard.copy(std::move(contents));
    }
    /// Captures a copy, from the tick that sees it to the entry.
    void capture(const QString& text)
    {
        fake.generalPasteboard.copyString(text);
        controller->checkPasteboard();
        settle();
    }
    void capture(const QMap<QString, QByteArray>& data, const QStringList& furtherTypes = {})
    {
        copy(data, furtherTypes);
        controller->checkPasteboard();
        settle();
    }
    void remake()
    {
        controller = ClipboardHistoryController::make(settings, archive.directory, Log::make(historyID));
    }
    void load()
    {
        controller->loadHistory();
        settle();
    }

    HistoryViewModel& model() { return controller->panel().model; }
    [[nodiscard]] const QList<ClipItem>& items() const { return controller->store().items; }
    [[nodiscard]] const QList<ClipItem>& shown() const { return controller->panel().model.items.get(); }
    [[nodiscard]] QStringList itemTexts() const { return texts(items()); }
    /// Returns nothing when there is no file.
    [[nodiscard]] std::optional<QByteArray> fileContent() const
    {
        QFile file(archive.historyPath());
        return file.open(QIODevice::ReadOnly) ? std::optional(file.readAll()) : std::nullopt;
    }
    [[nodiscard]] std::optional<QList<ClipItem>> savedItems() const
    {
        const auto content = fileContent();
        return content ? HistoryCodec::decode(*content) : std::nullopt;
    }
    [[nodiscard]] QStringList imageFiles() const
    {
        return QDir(archive.imagesPath())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    [[nodiscard]] QStringList pasteboardTypes() const { return fake.generalPasteboard.contents().types; }
    [[nodiscard]] std::optional<QString> pasteboardText() const
    {
        return fake.generalPasteboard.contents().stringForType(pasteboardType::string);
    }
    [[nodiscard]] std::size_t pastes() const { return fake.eventTaps.delivered.size() / 2; }

    FakePlatform fake;
    QTemporaryDir home;
    HistoryArchive archive{home.filePath(QStringLiteral("Orvane/") + historyID)};
    std::shared_ptr<ClipboardHistorySettings> settings =
        std::make_shared<ClipboardHistorySettings>(ScopedPreferences(fake.defaults, historyID));
    std::shared_ptr<ClipboardHistoryController> controller =
        ClipboardHistoryController::make(settings, archive.directory, Log::make(historyID));
};

} // namespace orvane::tests
