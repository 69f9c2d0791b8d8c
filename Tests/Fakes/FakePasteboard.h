// A pasteboard on which a test copies as another program would.
#pragma once

#include "Platform/Pasteboard.h"
#include "Platform/RunLoop.h"

#include <vector>

namespace orvane {

class FakePasteboard : public Pasteboard {
public:
    /// How the program that owns the content answers a read.
    enum class Owner {
        answers,
        hangs, // the read waits until the owner is set to another value
        fails, // the read completes with nothing
    };

    explicit FakePasteboard(RunLoop& runLoop) : m_runLoop(runLoop) {}

    [[nodiscard]] QString limitation() const override { return limit; }
    [[nodiscard]] int changeCount() const override { return m_contents.changeCount; }
    std::unique_ptr<PasteboardWatch> watch(std::function<void()> handler) override;
    std::unique_ptr<PasteboardRead> read(const QStringList& types, Completion completion) override;
    int clearContents() override;
    bool setString(const QString& string, const QString& type) override;
    bool setData(const QByteArray& data, const QString& type) override;
    bool writeObjects(const QList<QUrl>& fileURLs) override;
    bool writeObjects(const PasteboardImage& image) override;

    /// Copies as another program does. The count and the types are made from the content; `types` adds
    /// further ones.
    void copy(PasteboardContents contents);
    void copyString(const QString& string);
    void setOwner(Owner owner);
    /// Lets the count go on from another number.
    void setChangeCount(int count) { m_contents.changeCount = count; }
    /// While it's held, others don't get what was written, and so reads of it wait.
    void setHeld(bool isHeld);

    /// All that is on the pasteboard, from whichever program.
    [[nodiscard]] const PasteboardContents& contents() const { return m_contents; }
    /// The number of reads that were begun.
    int reads = 0;
    QString limit;
    /// False to stand for a platform that doesn't announce copies.
    bool announcesCopies = true;
    /// True to refuse what is added, as after a copy of another program.
    bool refusesWrites = false;
    /// Called when this program takes the pasteboard.
    std::function<void()> onClear = [] {};

private:
    struct Request;
    class Read;
    class Watch;

    void announce();
    void addType(const QString& type);
    void complete(const std::weak_ptr<Request>& request);
    void completeWaiting();

    RunLoop& m_runLoop;
    PasteboardContents m_contents;
    bool m_isOurs = false;
    bool m_isHeld = false;
    Owner m_owner = Owner::answers;
    std::vector<std::weak_ptr<Request>> m_waiting;
    std::vector<std::weak_ptr<Watch>> m_watches;
};

} // namespace orvane
