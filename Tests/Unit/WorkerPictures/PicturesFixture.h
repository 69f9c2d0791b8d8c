// A folder of pictures and the real worker.
#pragma once

#include "Fakes/FakeLogSink.h"
#include "PlatformLinux/Common/HelperProgram.h"
#include "PlatformLinux/Worker/WorkerPictures.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <unistd.h>

namespace orvane::tests {

using namespace std::chrono_literals;

class PicturesFixture : public ::testing::Test {
protected:
    [[nodiscard]] QString path(const QString& name) const { return folder.filePath(name); }

    /// Writes a picture of colours that differ everywhere.
    QString addPicture(const QString& name, int width = 40, int height = 30) const
    {
        QImage image(width, height, QImage::Format_RGB32);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x)
                image.setPixel(x, y, qRgb(x * 255 / width, y * 255 / height, 100));
        }
        EXPECT_TRUE(image.save(path(name)));
        return path(name);
    }

    [[nodiscard]] std::optional<Pictures::Size> measure(const QString& file)
    {
        return pictures.measure(file, {});
    }

    /// Resizes to `size`, as "NAME.copy.EXT" and with numbers after that. Nothing when it fails.
    [[nodiscard]] std::optional<QString> resize(const QString& source, Pictures::Size size,
                                                Pictures::Type type, const QString& extension,
                                                double quality = 0.9)
    {
        const auto sourceSize = measure(source);
        if (!sourceSize)
            return std::nullopt;
        return pictures.writeCopy(
            {source, *sourceSize, size, type, quality,
             [=](int index) { return QString(source + QStringLiteral(".copy%1.").arg(index) + extension); }},
            {});
    }
    [[nodiscard]] std::optional<QString> resizeToPng(const QString& source, Pictures::Size size = {20, 15})
    {
        return resize(source, size, Pictures::Type::png, QStringLiteral("png"));
    }

    /// Returns all names in the folder, hidden ones too.
    [[nodiscard]] QStringList names() const
    {
        return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    /// Returns the processes that this one has started and that still run.
    [[nodiscard]] static QList<pid_t> workers()
    {
        QList<pid_t> found;
        const QString threads = QStringLiteral("/proc/self/task");
        for (const QString& thread : QDir(threads).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            QFile children(threads + u'/' + thread + QStringLiteral("/children"));
            if (!children.open(QFile::ReadOnly))
                continue;
            for (const QByteArray& child : children.readAll().split(' ')) {
                if (child.toInt() > 0)
                    found.append(child.toInt());
            }
        }
        return found;
    }

    QTemporaryDir folder;
    FakeLogSink log;
    std::chrono::milliseconds limit = 60s;
    WorkerPictures pictures{helperProgram("orvane-worker"), log, limit};
};

} // namespace orvane::tests
