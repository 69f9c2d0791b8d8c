// The marks of private copies, as other programs offer them.
#include "Contract/Support/SelectionOwner.h"
#include "Fakes/FakeLogSink.h"
#include "PlatformLinux/Pasteboard/X11Pasteboard.h"
#include "PlatformLinux/Session/QtRunLoop.h"
#include "Support/Eventually.h"

#include <gmock/gmock.h>

namespace orvane::tests {
namespace {

using Manner = SelectionOwner::Manner;
using ::testing::Contains;
using ::testing::Not;

const QString concealed = QStringLiteral("org.nspasteboard.ConcealedType");

class PasteboardMarksTest : public ::testing::Test {
protected:
    PasteboardMarksTest() { (void)types(); } // changes of owner are announced from then on

    /// Returns the types of what another program offers.
    QStringList typesOf(const QMap<QByteArray, QByteArray>& offered, Manner manner = Manner::whole)
    {
        const int before = pasteboard.changeCount();
        const SelectionOwner owner(offered, manner);
        EXPECT_TRUE(eventually(10s, [&] { return pasteboard.changeCount() == before + 1; }));
        return types();
    }
    QStringList types()
    {
        bool isRead = false;
        QStringList told;
        const auto read = pasteboard.read({}, [&](const std::optional<PasteboardContents>& contents) {
            isRead = true;
            told = contents ? contents->types : QStringList();
        });
        EXPECT_TRUE(eventually(40s, [&] { return isRead; }));
        return told;
    }

    FakeLogSink log;
    QtRunLoop runLoop;
    X11Pasteboard pasteboard{log, runLoop};
};

} // namespace

TEST_F(PasteboardMarksTest, AnEmptyMarkOfAPasswordManagerIsAMark)
{
    EXPECT_THAT(typesOf({{"UTF8_STRING", "x"}, {"x-kde-passwordManagerHint", ""}}), Contains(concealed));
}

TEST_F(PasteboardMarksTest, AMarkThatIsRefusedIsAMark)
{
    EXPECT_THAT(typesOf({{"UTF8_STRING", "x"}, {"x-kde-passwordManagerHint", "secret"}}, Manner::refusesData),
                Contains(concealed));
}

TEST_F(PasteboardMarksTest, AnotherValueSaysThatTheCopyIsNotPrivate)
{
    EXPECT_THAT(typesOf({{"UTF8_STRING", "x"}, {"x-kde-passwordManagerHint", "public"}}),
                Not(Contains(concealed)));
}

TEST_F(PasteboardMarksTest, TwoMarksAreNotTakenBackByOneOfThem)
{
    EXPECT_THAT(typesOf({{"UTF8_STRING", "x"},
                         {"x-kde-passwordManagerHint", "public"},
                         {"org.nspasteboard.ConcealedType", ""}}),
                Contains(concealed));
}

TEST_F(PasteboardMarksTest, AMarkBehindHundredsOfTargetsIsSeen)
{
    QMap<QByteArray, QByteArray> offered;
    for (int i = 0; i < 600; ++i)
        offered.insert("a/" + QByteArray::number(i), "x"); // their names come first in the list
    offered.insert("org.nspasteboard.TransientType", "");
    offered.insert("x-kde-passwordManagerHint", "secret");
    const QStringList types = typesOf(offered);
    EXPECT_THAT(types, Contains(concealed));
    EXPECT_THAT(types, Contains(QStringLiteral("org.nspasteboard.TransientType")));
    EXPECT_EQ(types.size(), 512 - 1 + 2) << "the first of the targets stands for their list";
}

} // namespace orvane::tests
