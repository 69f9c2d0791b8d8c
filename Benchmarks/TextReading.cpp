// Reads lines of text that are rendered as a screen shows them, and prints how many characters are right and
// how long it takes, beside the `tesseract` program on the same pictures.
//
//     QT_QPA_PLATFORM=offscreen TextReading [every [alone]]
//
// With a number, only each so-and-so-many-th picture is read; with "alone", the program isn't started.
#include "Fakes/FakeLogSink.h"
#include "PlatformLinux/Common/HelperProgram.h"
#include "PlatformLinux/Worker/WorkerTextRecognition.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <map>
#include <vector>

using namespace orvane;

namespace {

using namespace std::chrono_literals;

const QStringList modelFolders{QStringLiteral("/usr/share/tesseract-ocr/5/tessdata")};

struct Tongue {
    const char* name;
    QStringList models;
    QStringList lines;
};

const std::array tongues{
    Tongue{"English",
           {QStringLiteral("eng")},
           {QStringLiteral("The quick harvest of 1987 filled every barn."),
            QStringLiteral("Please send 24 boxes to 16 Market Square."),
            QStringLiteral("Why does water boil faster on a mountain?"),
            QStringLiteral("Joking aside, zebras graze by moonlight."),
            QStringLiteral("Total amount due: 1,350.72 dollars"),
            QStringLiteral("Meet us at the harbour, near the lighthouse."),
            QStringLiteral("Save the file before you close the window."),
            QStringLiteral("\"Never mind,\" said Victor, \"we have time.\"")}},
    Tongue{"German",
           {QStringLiteral("deu"), QStringLiteral("eng")},
           {QStringLiteral("Die Brücke über den Fluss wurde 1963 gebaut."),
            QStringLiteral("Bitte schließen Sie die Tür nach 18 Uhr."),
            QStringLiteral("Größe und Gewicht stehen auf der Rückseite."),
            QStringLiteral("Äpfel, Birnen und Quitten kosten 2,49 Euro."),
            QStringLiteral("Wann fährt der nächste Zug nach Köln?"),
            QStringLiteral("Das Fenster zur Straße lässt sich öffnen."),
            QStringLiteral("Vielen Dank für Ihre schnelle Antwort!"),
            QStringLiteral("Übung macht den Meister, sagt man hier.")}},
};
const QStringList faces{QStringLiteral("DejaVu Sans"), QStringLiteral("DejaVu Serif"),
                        QStringLiteral("DejaVu Sans Mono"), QStringLiteral("Nimbus Sans"),
                        QStringLiteral("Nimbus Roman")};
constexpr std::array sizes{9, 10, 12, 14, 18, 24};
enum class Text { darkOnLight, lightOnDark };
enum class Ground { flat, photograph };

struct Case {
    const Tongue* tongue = nullptr;
    QString face;
    int size = 0;
    Text text{};
    Ground ground{};
    QStringList lines;

    [[nodiscard]] QStringList groups() const
    {
        const QString onGround =
            ground == Ground::flat ? QStringLiteral("flat") : QStringLiteral("photograph");
        const QString shade =
            text == Text::darkOnLight ? QStringLiteral("dark on light") : QStringLiteral("light on dark");
        return {QStringLiteral("1 all"), QStringLiteral("2 ") + QLatin1String(tongue->name),
                QStringLiteral("3 ") + face, QStringLiteral("4 %1 points").arg(size, 2),
                QStringLiteral("5 ") + shade + QStringLiteral(", ") + onGround};
    }
};

/// Noise of several sizes, smooth and in colour: the forms and the grain of a photograph.
QImage photograph(QSize size, Text text, QRandomGenerator& random)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::gray);
    QPainter painter(&image);
    for (const auto& [grains, opacity] : {std::pair{3, 1.0}, {9, 0.5}, {40, 0.2}, {200, 0.12}}) {
        QImage noise(grains, std::max(2, grains * size.height() / size.width()), QImage::Format_RGB32);
        for (int y = 0; y < noise.height(); ++y) {
            for (int x = 0; x < noise.width(); ++x)
                noise.setPixel(x, y, random.generate() | 0xFF000000);
        }
        painter.setOpacity(opacity);
        painter.drawImage(QRect(QPoint(), size),
                          noise.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }
    // A photograph on which a person can read: bright for dark text, dark for light text.
    painter.setOpacity(0.45);
    painter.fillRect(image.rect(), text == Text::darkOnLight ? Qt::white : Qt::black);
    return image;
}

QImage rendered(const Case& one, QRandomGenerator& random)
{
    QFont font(one.face);
    font.setPixelSize(static_cast<int>(std::lround(one.size * 96 / 72.0)));
    const QFontMetrics metrics(font);
    int width = 0;
    for (const QString& line : one.lines)
        width = std::max(width, metrics.horizontalAdvance(line));
    const int margin = 4 + static_cast<int>(random.bounded(12));
    const QSize size(width + 2 * margin,
                     static_cast<int>(one.lines.size()) * metrics.lineSpacing() + 2 * margin);
    const bool isDark = one.text == Text::darkOnLight;
    QImage image(size, QImage::Format_RGB32);
    image.fill(isDark ? QColor(250, 250, 250) : QColor(35, 38, 41));
    if (one.ground == Ground::photograph)
        image = photograph(size, one.text, random);
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(isDark ? QColor(20, 20, 20) : QColor(240, 240, 240));
    int y = margin + metrics.ascent();
    for (const QString& line : one.lines) {
        painter.drawText(margin, y, line);
        y += metrics.lineSpacing();
    }
    return image;
}

std::vector<Case> cases()
{
    std::vector<Case> all;
    int next = 0;
    for (const Tongue& tongue : tongues) {
        for (const QString& face : faces) {
            for (const int size : sizes) {
                for (const Text text : {Text::darkOnLight, Text::lightOnDark}) {
                    for (const Ground ground : {Ground::flat, Ground::photograph}) {
                        const auto line = [&] { return tongue.lines[next++ % tongue.lines.size()]; };
                        const QString first = line();
                        all.push_back({&tongue, face, size, text, ground, {first, line()}});
                    }
                }
            }
        }
    }
    return all;
}

/// The least number of characters to insert, to leave out and to exchange.
int distance(const QString& first, const QString& second)
{
    std::vector<int> row(static_cast<std::size_t>(second.size()) + 1);
    for (std::size_t index = 0; index < row.size(); ++index)
        row[index] = static_cast<int>(index);
    for (qsizetype i = 0; i < first.size(); ++i) {
        int diagonal = std::exchange(row[0], static_cast<int>(i) + 1);
        for (std::size_t j = 1; j < row.size(); ++j) {
            const int exchanged = diagonal + (first[i] == second[static_cast<qsizetype>(j) - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({exchanged, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

struct Score {
    int characters = 0;
    int wrong = 0;
    int programWrong = 0;
};

struct Readers {
    explicit Readers(FakeLogSink& log)
    {
        for (const Tongue& tongue : tongues) {
            byTongue[&tongue] = std::make_unique<WorkerTextRecognition>(
                helperProgram("orvane-worker"),
                [&tongue] { return TextLanguages(tongue.models, modelFolders); }, log, 60s);
            byTongue[&tongue]->prepare({});
        }
    }
    std::map<const Tongue*, std::unique_ptr<WorkerTextRecognition>> byTongue;
};

QString readByProgram(const QImage& image, const Case& one, const QTemporaryDir& folder)
{
    const QString path = folder.filePath(QStringLiteral("picture.png"));
    image.save(path);
    QProcess program;
    program.start(QStringLiteral("tesseract"),
                  {path, QStringLiteral("stdout"), QStringLiteral("-l"), one.tongue->models.join(u'+')});
    program.waitForFinished(-1);
    QStringList lines = QString::fromUtf8(program.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    return lines.join(u'\n').trimmed();
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values.empty() ? 0 : values[values.size() / 2];
}

} // namespace

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    const int every = argc > 1 ? std::max(1, std::atoi(argv[1])) : 1;
    const bool isWordy = qEnvironmentVariableIsSet("TEXT_READING_WORDY");
    const bool isAlone = argc > 2;
    FakeLogSink log;
    Readers readers(log);
    const QTemporaryDir folder;
    QRandomGenerator random(20240601);
    std::map<QString, Score> scores;
    std::vector<double> times;
    std::vector<double> programTimes;
    std::size_t lines = 0;
    const auto all = cases();
    for (std::size_t index = 0; index < all.size(); index += static_cast<std::size_t>(every)) {
        const Case& one = all[index];
        const QImage image = rendered(one, random);
        const TextRecognition::Image pixels{
            image.width(), image.height(),
            QByteArray(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes())};
        QElapsedTimer watch;
        watch.start();
        const auto read = readers.byTongue[one.tongue]->recognize(pixels, {});
        times.push_back(static_cast<double>(watch.nsecsElapsed()) / 1e6);
        watch.restart();
        const QString byProgram = isAlone ? QString() : readByProgram(image, one, folder);
        programTimes.push_back(static_cast<double>(watch.nsecsElapsed()) / 1e6);
        const QString expected = one.lines.join(u'\n');
        const QString got = read.value_or(QStringList()).join(u'\n');
        const int wrong = distance(expected, got);
        const int programWrong = distance(expected, byProgram);
        if (isWordy && wrong > 2)
            std::printf("%s: %s\n", qPrintable(one.groups().join(u' ')), qPrintable(got));
        for (const QString& group : one.groups()) {
            scores[group].characters += static_cast<int>(expected.size());
            scores[group].wrong += wrong;
            scores[group].programWrong += programWrong;
        }
        lines += static_cast<std::size_t>(one.lines.size());
    }
    std::printf("%zu lines                     here   program\n", lines);
    for (const auto& [group, score] : scores) {
        const auto share = [&score](int wrong) { return 100.0 - 100.0 * wrong / score.characters; };
        std::printf("%-30s %6.2f %% %6.2f %%\n", qPrintable(group.mid(2)), share(score.wrong),
                    share(score.programWrong));
    }
    std::printf("milliseconds for a picture, median: %.0f here, %.0f by the program\n", median(times),
                median(programTimes));
    return 0;
}
