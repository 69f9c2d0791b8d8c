// The selection targets of X that stand for the types of a pasteboard, both ways. Pure.
#pragma once

#include "Platform/Pasteboard.h"
#include "PlatformLinux/Pasteboard/ForeignPicture.h"

#include <vector>

namespace orvane {

using TargetName = QByteArray;

/// One question to an owner: the first of the targets that it gives is fetched.
struct ReadStep {
    enum class Purpose {
        type,       // the data of a type
        files,      // a list of URLs: files, or else a link
        secretHint, // the mark of a password manager
    };
    Purpose purpose = Purpose::type;
    QString type;
    std::vector<TargetName> targets;
};

/// The part of a copy that was read.
struct SelectionContents {
    PasteboardContents contents = {};
    /// A picture that still has to be converted, which is slow. It becomes the PNG of the contents.
    std::optional<ForeignPicture> picture = {};
};

/// Returns the targets that mark a copy as private. They count wherever they stand among the others.
std::vector<TargetName> privacyMarks();

/// Returns the types that an owner's targets stand for, except those that only its answers show: files, and
/// links in a list of URLs. The mark of a password manager counts until its answer says otherwise.
QStringList typesOfTargets(const QList<TargetName>& targets);

/// Returns what has to be fetched for these types.
std::vector<ReadStep> readSteps(const QList<TargetName>& targets, const QStringList& wantedTypes);

/// Adds what an owner has given for a step.
void takeAnswer(SelectionContents& read, const QStringList& wantedTypes, const ReadStep& step,
                const TargetName& target, const QByteArray& bytes);

/// Returns the contents without the data of other types.
PasteboardContents ofTypes(PasteboardContents contents, const QStringList& types);

/// Returns the targets as which content of ours is offered.
QList<TargetName> targetsOfContents(const PasteboardContents& contents);
/// The content for one target; nothing for a target that isn't offered.
struct TargetData {
    /// The property's type.
    TargetName type;
    QByteArray bytes;
};
std::optional<TargetData> dataForTarget(const PasteboardContents& contents, const TargetName& target);

} // namespace orvane
