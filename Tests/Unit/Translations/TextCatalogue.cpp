#include "Unit/Translations/TextCatalogue.h"

#include <QFile>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

namespace orvane {

namespace {

CatalogueText readTranslation(QXmlStreamReader& xml)
{
    CatalogueText text{.translations = {},
                       .isFinished = !xml.attributes().hasAttribute(QStringLiteral("type"))};
    QString whole;
    while (!xml.atEnd() && xml.readNext() != QXmlStreamReader::EndElement) {
        if (xml.isCharacters())
            whole += xml.text();
        else if (xml.isStartElement())
            text.translations.append(xml.readElementText());
    }
    if (text.translations.isEmpty() && !whole.trimmed().isEmpty())
        text.translations = {whole};
    return text;
}

} // namespace

TextCatalogue readCatalogue(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    QXmlStreamReader xml(&file);
    TextCatalogue catalogue;
    TextKey key;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == u"name") {
            key.context = xml.readElementText();
        } else if (xml.name() == u"message") {
            key.source.clear();
            key.comment.clear();
        } else if (xml.name() == u"source") {
            key.source = xml.readElementText();
        } else if (xml.name() == u"comment") {
            key.comment = xml.readElementText();
        } else if (xml.name() == u"translation") {
            catalogue.insert(key, readTranslation(xml));
        }
    }
    EXPECT_FALSE(xml.hasError()) << path.toStdString() << ": " << xml.errorString().toStdString();
    return catalogue;
}

} // namespace orvane
