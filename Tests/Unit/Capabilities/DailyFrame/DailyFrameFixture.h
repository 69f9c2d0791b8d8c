// The daily wallpaper on a fake desktop, with two services that a test fills. Files are real ones.
#pragma once

#include "Capabilities/DailyFrame/DailyFrameController.h"
#include "Fakes/FakePlatform.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace orvane::tests {

inline const QString dailyFrameID = QStringLiteral("net.lindenrow.orvane.dailyframe");

/// A picture to the fake worker; anything else is none.
inline const QByteArray pictureBytes = "PICTURE";

struct DailyFrameFixture : testing::Test {
    DailyFrameFixture()
    {
        fake.fileManager.supportDirectories = {folder.filePath(QStringLiteral("support"))};
        fake.fileManager.pictures = folder.filePath(QStringLiteral("Pictures"));
        fake.pictures.elsewhere = [](const QString& path) -> std::optional<Pictures::Size> {
            if (!contentOf(path).startsWith(pictureBytes))
                return std::nullopt;
            return Pictures::Size{3840, 2160};
        };
    }

    static QByteArray contentOf(const QString& path)
    {
        QFile file(path);
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// Lets everything run that doesn't wait for a server.
    void settle()
    {
        for (int turn = 0; turn < 10; ++turn) {
            fake.runLoop.drain();
            fake.runLoop.drainDetached();
        }
        fake.runLoop.drain();
    }

    static QUrl bingList(const QString& market = QStringLiteral("en-US"))
    {
        return QUrl(QStringLiteral("https://www.bing.com/HPImageArchive.aspx?format=js&idx=0&n=8&mkt=") +
                    market);
    }
    static QUrl unsplashList(int height = 900, int width = 1440)
    {
        return QUrl(
            QStringLiteral("https://services.bonjourr.fr/backgrounds/bonjourr/images/daylight?h=%1&w=%2")
                .arg(height)
                .arg(width));
    }
    static QUrl bingPicture(int number)
    {
        return QUrl(QStringLiteral("https://www.bing.com/p%1_UHD.jpg").arg(number));
    }
    static QUrl unsplashPicture(int number)
    {
        return QUrl(QStringLiteral("https://images.example/%1.png").arg(number));
    }

    /// Has the services offer these pictures.
    void serveBing(const QList<int>& numbers, const QString& market = QStringLiteral("en-US"))
    {
        QByteArrayList images;
        for (const int number : numbers) {
            const QByteArray n = QByteArray::number(number);
            images.append(R"({"startdate":")" + n + R"(","urlbase":"/p)" + n +
                          R"(","title":"","copyright":"Credit )" + n + R"("})");
            serve(bingPicture(number), pictureBytes + n);
        }
        serve(bingList(market), R"({"images":[)" + images.join(',') + "]}");
    }
    void serveUnsplash(const QList<int>& numbers)
    {
        QByteArrayList photographs;
        for (const int number : numbers) {
            photographs.append(R"({"urls":{"full":")" + unsplashPicture(number).toEncoded() + R"("}})");
            serve(unsplashPicture(number), pictureBytes + QByteArray::number(number));
        }
        serve(unsplashList(), R"({"day":[)" + photographs.join(',') + "]}");
    }
    void serve(const QUrl& url, const QByteArray& body, int status = 200)
    {
        fake.http.answers.insert(url, Http::Response{status, body});
    }
    void cutNetwork(const QUrl& url)
    {
        fake.http.answers.insert(url,
                                 PlatformError(PlatformError::Kind::failed, QStringLiteral("No network.")));
    }

    [[nodiscard]] QString fileFor(const QString& name) const
    {
        return folder.filePath(QStringLiteral("support/DailyFrame/") + name);
    }
    [[nodiscard]] QStringList namesIn(const QString& path) const
    {
        return QDir(folder.filePath(path)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    /// The picture on the only display; empty for none.
    [[nodiscard]] QString shown() const
    {
        return fake.desktopPicture.pictures.value(QStringLiteral("Display 1"));
    }
    [[nodiscard]] QString currentID() const { return controller->current.get().value_or(WallpaperItem{}).id; }
    [[nodiscard]] qsizetype asked(const QUrl& url) const
    {
        return std::ranges::count_if(fake.http.requests,
                                     [&url](const auto& request) { return request.url == url; });
    }
    [[nodiscard]] QVariant storedDay() const
    {
        return fake.defaults.stored.value(dailyFrameID + QStringLiteral(".lastChangeDay"));
    }

    QTemporaryDir folder;
    FakePlatform fake;
    std::shared_ptr<DailyFrameSettings> settings =
        std::make_shared<DailyFrameSettings>(ScopedPreferences(fake.defaults, dailyFrameID));
    std::shared_ptr<DailyFrameController> controller = std::make_shared<DailyFrameController>(
        settings, WallpaperManager(fake.desktopPicture, fake.pictures, fake.fileManager),
        Log::make(dailyFrameID));
};

} // namespace orvane::tests
