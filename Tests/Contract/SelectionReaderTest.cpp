// The limits of a read of another program's clipboard, with a time moved by hand.
#include "PlatformLinux/Pasteboard/SelectionReader.h"
#include "Contract/Support/SelectionOwner.h"
#include "PlatformLinux/Pasteboard/SelectionConnection.h"
#include "Support/Eventually.h"

#include <string_view>

#include <gtest/gtest.h>

namespace orvane::tests {
namespace {

using Manner = SelectionOwner::Manner;
using std::chrono::steady_clock;

class SelectionReaderTest : public ::testing::Test {
protected:
    /// Asks for a type, and goes on until the owner has answered with its targets and was asked for one of
    /// them.
    void askFor(const QString& type)
    {
        isAnswered = false;
        notices = 0;
        reader.add(1, {type}, [this](std::optional<SelectionContents> contents) {
            isAnswered = true;
            answer = std::move(contents);
        });
        EXPECT_TRUE(eventually(10s, [&] {
            handleEvents();
            return notices == 1;
        }));
        askedBefore = steady_clock::now();
    }
    void handleEvents()
    {
        connection->flush();
        while (const auto event = connection->nextEvent()) {
            const int type = event->response_type & 0x7F;
            notices += type == XCB_SELECTION_NOTIFY ? 1 : 0;
            if (type == XCB_SELECTION_NOTIFY)
                reader.handle(reinterpret_cast<const xcb_selection_notify_event_t&>(*event));
            else if (type == XCB_PROPERTY_NOTIFY)
                reader.handle(reinterpret_cast<const xcb_property_notify_event_t&>(*event));
        }
    }

    const std::unique_ptr<SelectionConnection> connection = SelectionConnection::open();
    PasteboardState state;
    SelectionReader reader{*connection, state};
    steady_clock::time_point askedBefore;
    int notices = 0;
    bool isAnswered = false;
    std::optional<SelectionContents> answer;
};

} // namespace

TEST_F(SelectionReaderTest, ATextIsGivenUpAfterFiveSecondsOfSilence)
{
    const SelectionOwner owner({{"UTF8_STRING", "x"}}, Manner::onlyTargets);
    askFor(pasteboardType::string);
    reader.handleDeadline(askedBefore + 4s);
    EXPECT_FALSE(isAnswered);
    reader.handleDeadline(askedBefore + 5s);
    EXPECT_TRUE(isAnswered);
    EXPECT_FALSE(answer);
}

TEST_F(SelectionReaderTest, APictureThatIsStillEncodedIsWaitedFor)
{
    for (const char* target : {"image/png", "image/tiff"}) {
        const SelectionOwner owner({{target, "x"}}, Manner::onlyTargets);
        askFor(target == std::string_view("image/png") ? pasteboardType::png : pasteboardType::tiff);
        reader.handleDeadline(askedBefore + 8s);
        EXPECT_FALSE(isAnswered) << target;
        reader.handleDeadline(askedBefore + 10s);
        EXPECT_TRUE(isAnswered) << target;
        EXPECT_FALSE(answer) << target;
    }
}

} // namespace orvane::tests
