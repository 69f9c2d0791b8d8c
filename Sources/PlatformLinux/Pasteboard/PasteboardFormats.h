// The formats in which programs of this desktop pass on files, links and texts. Pure; the input may be
// anything that another program has sent.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUrl>

#include <optional>

namespace orvane {

/// Returns the URLs of a text/uri-list, in order. Lines that aren't URLs are left out.
QList<QUrl> decodeUriList(const QByteArray& bytes);
QByteArray encodeUriList(const QList<QUrl>& urls);

/// Does the same for the format of file managers, whose first line says whether the files are copied or
/// moved.
QList<QUrl> decodeCopiedFiles(const QByteArray& bytes);
QByteArray encodeCopiedFiles(const QList<QUrl>& urls);

/// Returns the link of a text/x-moz-url, which is followed by a title; nothing if there is none.
std::optional<QString> decodeMozUrl(const QByteArray& bytes);
QByteArray encodeMozUrl(const QString& url);

/// Decodes a text that may be in UTF-16, as some browsers send it: with a byte order mark, or recognizably
/// without one. Text that is neither this nor UTF-8 is taken for Latin-1. Zeros at the end are dropped.
QString decodeText(const QByteArray& bytes);
QString decodeLatin1(const QByteArray& bytes);

bool isPng(const QByteArray& bytes);

} // namespace orvane
