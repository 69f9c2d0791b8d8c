// picture-taker FOLDER FEATURES LANGUAGES THEMES SCALE: takes a picture of every page of the window on the
// private desktop, from the running program with these features on. Lists are joined by commas; features are
// named by the last parts of their ids. The files are named after the English title of the page, the language
// and the theme.
#include "Desktop/Support/AccessibleTree.h"
#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/Program.h"
#include "Desktop/Support/Screen.h"
#include "Support/Eventually.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>

#include <cstdio>
#include <functional>
#include <memory>
#include <stdexcept>

namespace {

using namespace orvane::tests;
using namespace std::chrono_literals;

struct Theme {
    QString name;
    QString ofDesktop;
};

struct Variant {
    QDir folder;
    QStringList features;
    QString language;
    Theme theme;
    QString scale;
};

void require(bool holds, const QString& what)
{
    if (!holds)
        throw std::runtime_error(what.toStdString());
}

void run(const QString& program, const QStringList& arguments)
{
    require(QProcess::execute(program, arguments) == 0, program + QStringLiteral(" has failed"));
}

QString fileName(QString title)
{
    static const QRegularExpression others(QStringLiteral("[^a-z0-9]+"));
    return title.toLower().replace(others, QStringLiteral("-"));
}

/// True for the rows of the sidebar, and false for the headings between them.
bool isSelectable(const AccessibleNode& node)
{
    constexpr int selectable = 22; // of AT-SPI's states
    return node.role == QStringLiteral("list item") && ((node.states >> selectable) & 1) != 0;
}

struct PanelShortcut {
    const char* action;
    int keyCode;
    const char* key;
};
constexpr PanelShortcut layoutPanel{"snapzones.showLayouts", 40, "k"};

QByteArray defaultsWith(const QStringList& features)
{
    QJsonObject enabled;
    for (const QString& feature : features)
        enabled[QStringLiteral("net.lindenrow.orvane.") + feature] = true;
    QJsonObject all{{QStringLiteral("hasOnboarded"), true},
                    {QStringLiteral("Orvane.enabledCapabilities"), enabled}};
    constexpr int controlOption = 0x1800; // as shortcuts are stored
    all[QStringLiteral("KeyboardShortcuts_") + QLatin1StringView(layoutPanel.action)] =
        QStringLiteral("{\"carbonKeyCode\":%1,\"carbonModifiers\":%2}")
            .arg(layoutPanel.keyCode)
            .arg(controlOption);
    return QJsonDocument(all).toJson();
}

class Photographer {
public:
    explicit Photographer(Variant variant) : m_variant(std::move(variant)) {}

    void takeFirstRun()
    {
        start(std::nullopt);
        QStringList steps{QStringLiteral("welcome"), QStringLiteral("permissions"),
                          QStringLiteral("features")};
        for (const QString& step : steps) {
            take(step);
            if (step != steps.last())
                m_hardware.tap("Return");
        }
    }

    /// Takes each page of the sidebar. The first language gives the files their names.
    void takePages(QStringList& titles)
    {
        start(defaultsWith(m_variant.features));
        Program second({.environment = environment(), .home = m_program->home()});
        require(second.wait().has_value(), QStringLiteral("the second start doesn't end"));
        const bool namesFiles = titles.isEmpty();
        m_hardware.click(firstRow().place.center());
        std::optional<AccessibleNode> shown;
        const auto showsAnother = [&] {
            const QString before = shown ? shown->name : QString();
            if (const auto selected = selectedRow())
                shown = selected;
            return shown && shown->name != before;
        };
        for (qsizetype page = 0; eventually(2s, showsAnother); ++page) {
            if (namesFiles)
                titles.append(fileName(shown->name));
            m_hardware.click(shown->place.center()); // hides the focus ring, which is for the keyboard
            take(titles.value(page));
            m_hardware.tap("Down");
        }
        require(titles.size() > m_variant.features.size(), QStringLiteral("the window lacks a page"));
    }

    /// Takes the panel of layouts. The pages have been taken before.
    void takePanels() { takePanel(layoutPanel, QStringLiteral("snap-layouts")); }

private:
    [[nodiscard]] QMap<QString, QString> environment() const
    {
        return {{QStringLiteral("LANGUAGE"), m_variant.language},
                {QStringLiteral("LC_ALL"), m_variant.language == QStringLiteral("de")
                                               ? QStringLiteral("de_DE.UTF-8")
                                               : QStringLiteral("en_US.UTF-8")},
                {QStringLiteral("QT_SCALE_FACTOR"), m_variant.scale}};
    }
    void start(const std::optional<QByteArray>& defaults)
    {
        m_tree.reset();
        m_program.reset();
        run(QStringLiteral("xfconf-query"),
            {QStringLiteral("-c"), QStringLiteral("xsettings"), QStringLiteral("-p"),
             QStringLiteral("/Net/ThemeName"), QStringLiteral("-n"), QStringLiteral("-t"),
             QStringLiteral("string"), QStringLiteral("-s"), m_variant.theme.ofDesktop});
        m_program =
            std::make_unique<Program>(Program::Start{.defaults = defaults, .environment = environment()});
        require(m_program->waitUntilReady(), QStringLiteral("the program doesn't start"));
        m_tree = std::make_unique<AccessibleTree>(m_program->pid());
    }
    /// Returns the row at the top once it stands still.
    AccessibleNode firstRow()
    {
        std::optional<AccessibleNode> row;
        const auto isAtRest = [&] {
            const auto before = row;
            row.reset();
            for (const AccessibleNode& node : m_tree->nodes()) {
                if (!row && isSelectable(node))
                    row = node;
            }
            return row && before && before->place == row->place;
        };
        require(eventually(20s, isAtRest), QStringLiteral("the window shows no pages"));
        return *row;
    }
    std::optional<AccessibleNode> selectedRow()
    {
        for (const AccessibleNode& node : m_tree->nodes()) {
            if (isSelectable(node) && node.isSelected())
                return node;
        }
        return std::nullopt;
    }
    void takePanel(const PanelShortcut& shortcut, const QString& title)
    {
        QSet<std::uint32_t> before;
        for (const ScreenWindow& window : m_screen.windowsOf(m_program->pid()))
            before.insert(window.id);
        for (const char* key : {"Control_L", "Alt_L", shortcut.key})
            m_hardware.press(key);
        for (const char* key : {shortcut.key, "Alt_L", "Control_L"})
            m_hardware.release(key);
        take(title, [this, before]() -> std::optional<ScreenWindow> {
            constexpr int smallest = 50; // points; smaller ones aren't seen
            for (const ScreenWindow& window : m_screen.windowsOf(m_program->pid())) {
                if (!before.contains(window.id) && window.geometry.width() > smallest)
                    return window;
            }
            return std::nullopt;
        });
        m_hardware.tap("Escape");
    }

    void take(const QString& title)
    {
        take(title, [this] { return m_screen.window(m_program->pid(), QStringLiteral("Orvane")); });
    }
    /// Takes the window once it shows something else than in the last picture and doesn't change any more.
    void take(const QString& title, const std::function<std::optional<ScreenWindow>()>& find)
    {
        m_hardware.movePointer(QPoint(5, 895));
        constexpr std::chrono::milliseconds rest =
            350ms; // longer than a page fades between two steps, shorter than a caret blinks
        QImage picture;
        QElapsedTimer unchanged;
        const auto isAtRest = [&] {
            const auto window = find();
            const QImage before =
                std::exchange(picture, window ? m_screen.picture(window->geometry) : QImage());
            if (picture.isNull() || picture != before || picture == m_last)
                unchanged.start();
            return unchanged.hasExpired(rest.count());
        };
        require(eventually(20s, isAtRest), title + QStringLiteral(" doesn't come to rest"));
        const QString file = m_variant.folder.filePath(
            QStringLiteral("%1-%2-%3.png").arg(title, m_variant.language, m_variant.theme.name));
        m_last = picture;
        require(picture.save(file), file + QStringLiteral(" can't be written"));
        std::printf("%s\n", qPrintable(file));
        std::fflush(stdout);
    }

    Variant m_variant;
    QImage m_last;
    Screen m_screen;
    Hardware m_hardware;
    std::unique_ptr<Program> m_program;
    std::unique_ptr<AccessibleTree> m_tree;
};

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 6 || !qEnvironmentVariableIsSet("ORVANE_DESKTOP")) {
        std::fputs("picture-taker: is started by Tools/pictures\n", stderr);
        return 2;
    }
    const QMap<QString, QString> themes{{QStringLiteral("light"), QStringLiteral("Greybird")},
                                        {QStringLiteral("dark"), QStringLiteral("Greybird-dark")}};
    try {
        QStringList titles;
        for (const QString& language : arguments[3].split(u',')) {
            for (const QString& theme : arguments[4].split(u',')) {
                Photographer photographer({.folder = QDir(arguments[1]),
                                           .features = arguments[2].split(u','),
                                           .language = language,
                                           .theme = {theme, themes.value(theme)},
                                           .scale = arguments[5]});
                photographer.takeFirstRun();
                photographer.takePages(titles);
                photographer.takePanels();
            }
        }
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "picture-taker: %s\n", fault.what());
        return 1;
    }
    return 0;
}
