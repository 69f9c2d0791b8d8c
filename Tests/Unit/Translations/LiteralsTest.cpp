// No text goes past the catalogues: a literal that reads like words for a person is found in the sources.
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QStringList>

#include <gtest/gtest.h>

namespace {

/// A literal of QString or QStringView, in one piece or several.
const QRegularExpression& literal()
{
    static const QRegularExpression expression(QStringLiteral(
        R"re((?:QStringLiteral\(|fromUtf8\(|QLatin1StringView\(|\bu)\s*((?:"(?:[^"\\\n]|\\.)*"\s*)+))re"));
    return expression;
}

/// Words with a space between them, or one that begins with a capital letter.
bool readsLikeWords(const QString& text)
{
    static const QRegularExpression words(
        QStringLiteral("^[A-Z“]?[a-z]+[’']?[a-z]*,? [a-zA-Z%]|^[A-Z][a-z]{2,}[…:]?$"));
    return words.match(text).hasMatch();
}

/// The text is for the log or an error that is logged, or names an object: nobody gets to read it in a
/// window.
bool isForTheLog(const QString& before)
{
    static const QRegularExpression call(
        QStringLiteral("([lL]og\\w*(\\(\\))?\\.\\w+\\(|Log::make\\(|logError\\(|runtime_error\\(|"
                       "setObjectName\\(|qFatal\\()[^;{]*$"));
    return call.match(before).hasMatch();
}

/// Names that are the same in every language, and words of formats.
const QStringList& names()
{
    static const QStringList all{
        QStringLiteral("Orvane"),   QStringLiteral("Lindenrow"),   QStringLiteral("Bing"),
        QStringLiteral("Unsplash"), QStringLiteral("Daily Frame"), // services, and a folder
        QStringLiteral("Space")                                    // the key, worded by wordForKey()
    };
    return all;
}

QStringList literalsOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    static const QRegularExpression comment(QStringLiteral("(?<!:)//[^\n]*"));
    static const QRegularExpression ends(QStringLiteral("\"\\s*\""));
    const QString code = QString::fromUtf8(file.readAll()).remove(comment);
    QStringList found;
    for (const QRegularExpressionMatch& match : literal().globalMatch(code)) {
        const QString text = match.captured(1).trimmed().remove(ends).remove(u'"');
        constexpr qsizetype statement = 160;
        const qsizetype start = match.capturedStart();
        if (readsLikeWords(text) && !names().contains(text) &&
            !isForTheLog(code.mid(std::max<qsizetype>(0, start - statement), std::min(start, statement))))
            found.append(text);
    }
    return found;
}

class LiteralsTest : public ::testing::TestWithParam<const char*> {};

TEST_P(LiteralsTest, NoTextIsShownThatNoCatalogueCanHave)
{
    QDirIterator files(QStringLiteral(SOURCE_FOLDER "/") + QLatin1StringView(GetParam()),
                       {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files,
                       QDirIterator::Subdirectories);
    int count = 0;
    while (files.hasNext()) {
        const QString path = files.next();
        ++count;
        for (const QString& text : literalsOf(path))
            ADD_FAILURE() << path.toStdString() << ": \"" << text.toStdString()
                          << "\" is shown as it stands; put it through the tr() of its module";
    }
    EXPECT_GT(count, 10);
}

INSTANTIATE_TEST_SUITE_P(Modules, LiteralsTest,
                         ::testing::Values("Capabilities", "KeyboardShortcuts", "Orvane", "OrvaneKit",
                                           "OrvaneCore"));

} // namespace
