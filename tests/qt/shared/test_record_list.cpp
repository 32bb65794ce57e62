#include "shared/record_list.h"

#include <gmock/gmock.h>

#include <QThread>

#include <memory>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct Record
{
    int number = 0;

    bool operator==(const Record &other) const = default;
};

using Records = RecordList<Record>;

Records listOf(std::initializer_list<int> numbers)
{
    Records list;
    for (const int number : numbers) {
        list.append({number});
    }
    return list;
}

std::vector<int> numbersOf(const Records &list)
{
    std::vector<int> numbers;
    for (qsizetype index = 0; index < list.size(); ++index) {
        numbers.push_back(list.at(index)->number);
    }
    return numbers;
}

} // namespace

TEST(RecordList, CopiesWhatIsPutIn)
{
    Record record{1};
    Records list;
    list.append(record);
    record.number = 2;
    EXPECT_THAT(numbersOf(list), ElementsAre(1));
}

TEST(RecordList, ACopyHasRecordsOfItsOwn)
{
    const Records list = listOf({1, 2});
    Records copy = list;
    copy.at(0)->number = 7;
    EXPECT_THAT(numbersOf(list), ElementsAre(1, 2));
    copy = list;
    EXPECT_EQ(copy, list);
    EXPECT_NE(copy.at(0), list.at(0));
    EXPECT_FALSE(copy == listOf({1}));
    EXPECT_FALSE(copy == listOf({2, 1}));
}

TEST(RecordList, AReferenceOutlivesItsPlace)
{
    Records list = listOf({1, 2});
    const Records::Reference kept = list.at(0);
    list.removeAt(0);
    list = {};
    kept->number = 5;
    EXPECT_THAT(numbersOf(list), IsEmpty());
}

TEST(RecordList, HasNothingOutOfRange)
{
    Records list = listOf({1});
    EXPECT_EQ(list.at(1), nullptr);
    EXPECT_EQ(list.at(-1), nullptr);
    list.removeAt(1);
    list.removeAt(-1);
    EXPECT_EQ(list.size(), 1);
}

TEST(RecordList, FindsAndSorts)
{
    Records list = listOf({3, 1, 2});
    EXPECT_EQ(list.indexOf({1}), 1);
    EXPECT_EQ(list.indexOf({9}), -1);
    EXPECT_EQ(list.find([](const Record &record) { return record.number < 3; }), list.at(1));
    EXPECT_EQ(list.find([](const Record &record) { return record.number > 3; }), nullptr);
    list.sort([](const Record &left, const Record &right) { return left.number < right.number; });
    EXPECT_THAT(numbersOf(list), ElementsAre(1, 2, 3));
}

TEST(RecordList, MayBeReadWhileItChanges)
{
    Records list;
    const std::unique_ptr<QThread> writer(QThread::create([&] {
        for (int round = 0; round < 2000; ++round) {
            list.append({round});
            list.removeAt(round == 0 ? -1 : 0);
        }
    }));
    writer->start();
    while (!writer->isFinished()) {
        const Records::Reference last = list.at(list.size() - 1);
        EXPECT_TRUE(last == nullptr || last->number >= 0);
    }
    writer->wait();
    EXPECT_EQ(list.size(), 1);
}
