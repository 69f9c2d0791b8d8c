// Which selection targets of X stand for which types of a pasteboard, both ways. Pure.
#pragma once

#include "Platform/Pasteboard.h"

#include <vector>

namespace orvane {

using TargetName = QByteArray;

/// One thing to be fetched from an owner: the first of the targets that it gives.
struct ReadStep {
    enum class Purpose {
        type,       // the data of a type
        files,      // a list of URLs: files, or else a link
        secretHint, // whether a password manager says that it's secret
    };
    Purpose purpose = Purpose::type;
    QString type;
    std::vector<TargetName> targets;
};

/// The types that an owner's targets stand for, but for those that only its answers tell: files, links in a
/// list of URLs, and the mark of a secret.
QStringList typesOfTargets(const QList<TargetName>& targets);

/// What has to be fetched for these types.
std::vector<ReadStep> readSteps(const QList<TargetName>& targets, const QStringList& wantedTypes);

/// Adds what an owner has given for a step. Converting a picture takes its time.
void takeAnswer(PasteboardContents& contents, const QStringList& wantedTypes, const ReadStep& step,
                const TargetName& target, const QByteArray& bytes);

/// Without the data of other types.
PasteboardContents ofTypes(PasteboardContents contents, const QStringList& types);

/// What content of ours is offered as.
QList<TargetName> targetsOfContents(const PasteboardContents& contents);
/// And what it is then; nothing for a target that isn't offered.
struct TargetData {
    /// The property's type.
    TargetName type;
    QByteArray bytes;
};
std::optional<TargetData> dataForTarget(const PasteboardContents& contents, const TargetName& target);

} // namespace orvane
