// What the answers of another program become.
#include "PlatformLinux/Pasteboard/PasteboardTargets.h"

#include <gtest/gtest.h>

namespace orvane::tests {

namespace {

PasteboardContents contentsOf(const QByteArray& uriList)
{
    const ReadStep step{ReadStep::Purpose::files, {}, {"text/uri-list"}};
    SelectionContents read;
    takeAnswer(read, {pasteboardType::fileURL, pasteboardType::url}, step, "text/uri-list", uriList);
    return read.contents;
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

TEST(PasteboardTargets, FilesOfThisMachineAmongRemoteOnesAreLinksLikeThem)
{
    const PasteboardContents contents = contentsOf("file:///a%20b\r\nsftp://host/c\r\n");
    EXPECT_EQ(contents.types, QStringList{pasteboardType::url});
    EXPECT_EQ(contents.stringForType(pasteboardType::url), QStringLiteral("file:///a%20b\nsftp://host/c"));
    EXPECT_TRUE(contents.fileURLs.isEmpty());
}

TEST(PasteboardTargets, AListWithoutAddressesIsNothing)
{
    EXPECT_TRUE(contentsOf("# a comment\r\n").types.isEmpty());
}

TEST(PasteboardTargets, APictureThatHasToBeConvertedIsNoPngYet)
{
    for (const auto& [target, format] :
         {std::pair{"image/bmp", Pictures::Foreign::bmp}, std::pair{"image/jpeg", Pictures::Foreign::jpeg}}) {
        const auto steps = readSteps({target}, {pasteboardType::png});
        ASSERT_EQ(steps.size(), 1);
        SelectionContents read;
        takeAnswer(read, {pasteboardType::png}, steps[0], target, "bytes");
        EXPECT_TRUE(read.contents.data.isEmpty());
        ASSERT_TRUE(read.picture);
        EXPECT_EQ(read.picture->bytes, "bytes");
        EXPECT_EQ(read.picture->format, format);
    }
}

} // namespace orvane::tests
