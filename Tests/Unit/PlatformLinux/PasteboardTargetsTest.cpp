// What the answers of another program become.
#include "PlatformLinux/Pasteboard/PasteboardTargets.h"

#include <gtest/gtest.h>

namespace orvane::tests {

namespace {

PasteboardContents contentsOf(const QByteArray& uriList)
{
    const ReadStep step{ReadStep::Purpose::files, {}, {"text/uri-list"}};
    PasteboardContents contents;
    takeAnswer(contents, {pasteboardType::fileURL, pasteboardType::url}, step, "text/uri-list", uriList);
    return contents;
}

} // namespace

TEST(PasteboardTargets, SeveralRemoteFilesKeepAllTheirAddresses)
{
    const PasteboardContents contents = contentsOf("sftp://host/a%20b\r\nsmb://host/c\r\n");
    EXPECT_EQ(contents.types, QStringList{pasteboardType::url});
    EXPECT_EQ(contents.stringForType(pasteboardType::url), QStringLiteral("sftp://host/a%20b\nsmb://host/c"));
    EXPECT_TRUE(contents.fileURLs.isEmpty());
}

TEST(PasteboardTargets, ASingleLinkIsItself)
{
    const PasteboardContents contents = contentsOf("https://a.b/c\r\n");
    EXPECT_EQ(contents.stringForType(pasteboardType::url), QStringLiteral("https://a.b/c"));
}

TEST(PasteboardTargets, FilesOfThisMachineAreFiles)
{
    const PasteboardContents contents = contentsOf("file:///a\r\nfile:///b\r\n");
    EXPECT_EQ(contents.types, QStringList{pasteboardType::fileURL});
    EXPECT_EQ(contents.fileURLs.size(), 2);
}

} // namespace orvane::tests
