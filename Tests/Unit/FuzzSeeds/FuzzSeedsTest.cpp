// A seed that a fuzzer's promise doesn't hold for ends this process, as it ends the fuzzer; its name is the
// name of the test that runs then.
#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#define FUZZER(name) extern "C" int name(const std::uint8_t* data, std::size_t size);
#include "Fuzzers.inc"
#undef FUZZER

namespace orvane::tests {
namespace {

struct Fuzzer {
    const char* name;
    int (*run)(const std::uint8_t* data, std::size_t size);
};

const std::vector<Fuzzer>& fuzzers()
{
    static const std::vector<Fuzzer> all{
#define FUZZER(name) Fuzzer{#name, name},
#include "Fuzzers.inc"
#undef FUZZER
    };
    return all;
}

QDir seeds(const QString& fuzzer = {})
{
    return QDir(QStringLiteral(ORVANE_FUZZ_SEEDS "/") + fuzzer);
}

struct Seed {
    Fuzzer fuzzer;
    QString path;
};

std::vector<Seed> allSeeds()
{
    std::vector<Seed> all;
    for (const Fuzzer& fuzzer : fuzzers()) {
        const QDir folder = seeds(QString::fromLatin1(fuzzer.name));
        for (const QString& file : folder.entryList(QDir::Files, QDir::Name))
            all.push_back({fuzzer, folder.filePath(file)});
    }
    return all;
}

/// Letters and digits only, as names of tests have to be.
std::string nameOf(const ::testing::TestParamInfo<Seed>& seed)
{
    std::string name(seed.param.fuzzer.name);
    bool isWordStart = true;
    for (const QChar each : seed.param.path.section(u'/', -1)) {
        const bool isKept = each.isLetterOrNumber();
        if (isKept)
            name += isWordStart ? each.toUpper().toLatin1() : each.toLatin1();
        isWordStart = !isKept;
    }
    return name;
}

class FuzzSeedsTest : public ::testing::TestWithParam<Seed> {};

TEST_P(FuzzSeedsTest, KeepsThePromise)
{
    QFile file(GetParam().path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_EQ(GetParam().fuzzer.run(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                                    static_cast<std::size_t>(bytes.size())),
              0);
}

INSTANTIATE_TEST_SUITE_P(All, FuzzSeedsTest, ::testing::ValuesIn(allSeeds()), nameOf);

TEST(FuzzersTest, EachHasSeedsAndAllSeedsHaveAFuzzer)
{
    QStringList names;
    for (const Fuzzer& fuzzer : fuzzers())
        names.append(QString::fromLatin1(fuzzer.name));
    EXPECT_EQ(names, seeds().entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name));
    for (const QString& name : names)
        EXPECT_FALSE(seeds(name).entryList(QDir::Files).isEmpty()) << name.toStdString();
}

} // namespace
} // namespace orvane::tests
