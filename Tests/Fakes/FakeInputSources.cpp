#include "Fakes/FakeInputSources.h"

namespace orvane {

std::shared_ptr<FakeKeyboardLayout> FakeKeyboardLayout::american()
{
    struct Row {
        std::initializer_list<std::int64_t> codes;
        QStringView texts;
    };
    const Row rows[] = {
        {{0, 11, 8, 2, 14, 3, 5, 4, 34, 38, 40, 37, 46}, u"abcdefghijklm"},
        {{45, 31, 35, 12, 15, 1, 17, 32, 9, 13, 7, 16, 6}, u"nopqrstuvwxyz"},
        {{29, 18, 19, 20, 21, 23, 22, 26, 28, 25}, u"0123456789"},
        {{50, 27, 24, 33, 30, 42, 41, 39, 43, 47, 44, 49}, u"`-=[]\\;',./ "},
        {{82, 83, 84, 85, 86, 87, 88, 89, 91, 92}, u"0123456789"},
        {{65, 75, 81, 78, 67, 69}, u"./=-*+"},
    };
    Texts texts;
    for (const Row& row : rows) {
        qsizetype at = 0;
        for (const std::int64_t code : row.codes)
            texts.insert(code, QString(row.texts.at(at++)));
    }
    return std::make_shared<FakeKeyboardLayout>(std::move(texts));
}

} // namespace orvane
