#include "Capabilities/TextExtractor/TextExtractorSettingsPane.h"

#include "Capabilities/TextExtractor/TextExtractorText.h"
#include "OrvaneKit/Model/OrvaSettingRows.h"

namespace orvane::TextExtractorSettingsPane {

namespace {

using Languages = std::optional<TextRecognition::Languages>;

QString inUse(const Languages& languages)
{
    if (!languages)
        return TextExtractorText::tr("Looking for languages…");
    return languages->inUse.isEmpty() ? TextExtractorText::tr("None: no text can be read")
                                      : languages->inUse.join(QStringLiteral(", "));
}

/// Empty when nothing is missing.
QString toInstall(const Languages& languages)
{
    QStringList lines;
    for (const auto& language : languages ? languages->missing : QList<TextRecognition::MissingLanguage>())
        lines.append(TextExtractorText::tr("To read %1, install the package %2.")
                         .arg(language.name, language.package));
    return lines.join(u'\n');
}

} // namespace

AnyView make(const std::shared_ptr<TextExtractorController>& controller)
{
    controller->findLanguages();
    using Controller = TextExtractorController;
    const auto isMissing = [](const Languages& languages) { return !toInstall(languages).isEmpty(); };
    return OrvaPane{{
        section(TextExtractorText::tr("Output"), QStringLiteral("text.alignleft"),
                {toggleRow(controller->settings(), &TextExtractorSettings::joinLines,
                           TextExtractorText::tr("Join lines into one paragraph"),
                           TextExtractorText::tr("Off keeps the original line breaks."))}),
        section(TextExtractorText::tr("Languages"), QStringLiteral("text.viewfinder"),
                {OrvaValueRow{.title = TextExtractorText::tr("Text is read in"),
                              .value = live(controller, &Controller::languages, &inUse)},
                 OrvaIf{.condition = live(controller, &Controller::languages, isMissing),
                        .content =
                            OrvaCaptionRow{.text = live(controller, &Controller::languages, &toInstall)}}}),
        OrvaCalloutText{
            TextExtractorText::tr("Assign a shortcut above, then drag a box over any text on screen — even "
                                  "inside images or videos — to copy it.")},
    }};
}

} // namespace orvane::TextExtractorSettingsPane
