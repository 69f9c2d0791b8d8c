#include "Fakes/FakeDefaultsStore.h"
#include "Fakes/FakeLogSink.h"
#include "PlatformLinux/Defaults/JsonDefaultsStore.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace orvane::tests {

namespace {

/// A store together with its file or memory.
class Subject {
public:
    virtual ~Subject() = default;
    virtual DefaultsStore& store() = 0;
};

class FakeSubject : public Subject {
public:
    DefaultsStore& store() override { return m_store; }

private:
    FakeDefaultsStore m_store;
};

class LinuxSubject : public Subject {
public:
    DefaultsStore& store() override { return m_store; }

private:
    QTemporaryDir m_directory;
    FakeLogSink m_log;
    JsonDefaultsStore m_store{m_directory.path() + QLatin1String("/defaults.json"), m_log};
};

struct Implementation {
    const char* name;
    std::unique_ptr<Subject> (*make)();
};

const QString key = QStringLiteral("net.lindenrow.orvane.test.key");
const QString other = QStringLiteral("other");

} // namespace

class DefaultsStoreContract : public ::testing::TestWithParam<Implementation> {
protected:
    DefaultsStore& store() { return m_subject->store(); }

private:
    std::unique_ptr<Subject> m_subject = GetParam().make();
};

INSTANTIATE_TEST_SUITE_P(Platforms, DefaultsStoreContract,
                         ::testing::Values(Implementation{"Fake",
                                                          []() -> std::unique_ptr<Subject> {
                                                              return std::make_unique<FakeSubject>();
                                                          }},
                                           Implementation{"Linux",
                                                          []() -> std::unique_ptr<Subject> {
                                                              return std::make_unique<LinuxSubject>();
                                                          }}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(DefaultsStoreContract, AnAbsentKeyHasNoValueOfAnyType)
{
    EXPECT_FALSE(store().object(key).isValid());
    EXPECT_EQ(store().string(key), std::nullopt);
    EXPECT_EQ(store().data(key), std::nullopt);
    EXPECT_FALSE(store().boolean(key));
    EXPECT_EQ(store().integer(key), 0);
    EXPECT_TRUE(store().dictionaryRepresentation().isEmpty());
}

TEST_P(DefaultsStoreContract, AStoredValueLiesOverTheRegisteredOne)
{
    store().registerDefaults({{key, QStringLiteral("registered")}});
    EXPECT_EQ(store().string(key), QStringLiteral("registered"));
    store().set(key, QStringLiteral("stored"));
    EXPECT_EQ(store().string(key), QStringLiteral("stored"));
    store().registerDefaults({{key, QStringLiteral("registered later")}});
    EXPECT_EQ(store().string(key), QStringLiteral("stored"));
}

TEST_P(DefaultsStoreContract, AnInvalidValueRemovesTheKey)
{
    store().registerDefaults({{key, 1LL}});
    store().set(key, 2LL);
    store().set(other, 3LL);
    store().set(key, QVariant());
    store().set(other, QVariant());
    EXPECT_EQ(store().integer(key), 1);
    EXPECT_FALSE(store().object(other).isValid());
}

TEST_P(DefaultsStoreContract, RemovingAnAbsentKeyIsFine)
{
    store().remove(key);
    EXPECT_FALSE(store().object(key).isValid());
}

TEST_P(DefaultsStoreContract, AStoredFalseCountsAsPresent)
{
    store().registerDefaults({{key, true}});
    store().set(key, false);
    EXPECT_TRUE(store().object(key).isValid());
    EXPECT_FALSE(store().boolean(key));
}

TEST_P(DefaultsStoreContract, EveryTypeComesBackAsItself)
{
    const QVariant values[] = {
        true,
        false,
        std::numeric_limits<qint64>::max(),
        std::numeric_limits<qint64>::min(),
        1.0,
        0.1,
        QString(),
        QStringLiteral("\u00e9\n"),
        QByteArray("\x00\xff", 2),
        QVariantList{QStringLiteral("a"), 1LL, 2.0, true},
        QVariantMap{{QStringLiteral("a"),
                     QVariantList{QVariantMap{{QStringLiteral("$data"), QStringLiteral("AA==")}}}},
                    {QString(), 1LL}},
    };
    for (const QVariant& value : values) {
        store().set(key, value);
        EXPECT_EQ(store().object(key).typeId(), value.typeId());
        EXPECT_EQ(store().object(key), value);
    }
}

TEST_P(DefaultsStoreContract, AnIntIsAWholeNumber)
{
    store().set(key, 5);
    EXPECT_EQ(store().integer(key), 5);
    EXPECT_EQ(store().object(key).toLongLong(), 5);
    EXPECT_TRUE(store().boolean(key));
}

TEST_P(DefaultsStoreContract, AValueOfAnotherTypeReadsAsAbsent)
{
    store().set(key, 1LL);
    EXPECT_EQ(store().string(key), std::nullopt);
    EXPECT_EQ(store().data(key), std::nullopt);
    store().set(key, QStringLiteral("12"));
    EXPECT_EQ(store().integer(key), 0);
    EXPECT_EQ(store().data(key), std::nullopt);
    store().set(key, QByteArray("text"));
    EXPECT_EQ(store().string(key), std::nullopt);
    EXPECT_FALSE(store().boolean(key));
}

TEST_P(DefaultsStoreContract, NumbersAndWordsAreTruthValues)
{
    const std::pair<QVariant, bool> cases[] = {
        {1LL, true},
        {-3LL, true},
        {0LL, false},
        {0.5, true},
        {0.0, false},
        {QStringLiteral("YES"), true},
        {QStringLiteral("True"), true},
        {QStringLiteral("1"), true},
        {QStringLiteral("NO"), false},
        {QStringLiteral("2"), false},
        {QStringLiteral(""), false},
    };
    for (const auto& [value, expected] : cases) {
        store().set(key, value);
        EXPECT_EQ(store().boolean(key), expected) << value.toString().toStdString();
    }
}

TEST_P(DefaultsStoreContract, TheFractionOfAWholeNumberIsCutOff)
{
    store().set(key, 2.9);
    EXPECT_EQ(store().integer(key), 2);
    store().set(key, -2.9);
    EXPECT_EQ(store().integer(key), -2);
    store().set(key, 1e300);
    EXPECT_EQ(store().integer(key), 0);
    store().registerDefaults({{other, std::numeric_limits<double>::infinity()}});
    EXPECT_EQ(store().integer(other), 0);
}

TEST_P(DefaultsStoreContract, TheDictionaryHoldsEveryKeyInForceOnce)
{
    store().registerDefaults({{key, 1LL}, {other, 2LL}});
    store().set(key, 10LL);
    store().set(QStringLiteral("third"), 3LL);
    EXPECT_EQ(store().dictionaryRepresentation(),
              (QVariantMap{{key, 10LL}, {other, 2LL}, {QStringLiteral("third"), 3LL}}));
}

TEST_P(DefaultsStoreContract, RegisteringAgainAddsAndReplaces)
{
    store().registerDefaults({{key, 1LL}});
    store().registerDefaults({{other, 2LL}});
    store().registerDefaults({{key, 3LL}});
    EXPECT_EQ(store().integer(key), 3);
    EXPECT_EQ(store().integer(other), 2);
}

TEST_P(DefaultsStoreContract, WhatIsSetIsReadAtOnceAHundredTimesInARow)
{
    for (int number = 0; number < 100; ++number) {
        store().set(key, number);
        ASSERT_EQ(store().integer(key), number);
        ASSERT_EQ(store().dictionaryRepresentation(), (QVariantMap{{key, number}}));
    }
}

TEST_P(DefaultsStoreContract, KeysThatBeginAlikeAreDifferentKeys)
{
    store().set(QStringLiteral("a"), 1LL);
    store().set(QStringLiteral("a.b"), 2LL);
    store().set(QStringLiteral("A"), 3LL);
    store().remove(QStringLiteral("a"));
    EXPECT_EQ(store().integer(QStringLiteral("a.b")), 2);
    EXPECT_EQ(store().integer(QStringLiteral("A")), 3);
}

} // namespace orvane::tests
