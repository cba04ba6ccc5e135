#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <gtest/gtest.h>
#include <numeric>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "sources/CombSort.h"

namespace ostrevin {
namespace {

struct Entry {
    std::string key;
    std::size_t number = 0;
    bool operator==(const Entry&) const = default;
};

/// The comb sort, exchanging whole entries.
void PlainCombSort(std::vector<Entry>& entries) {
    const std::size_t count = entries.size();
    if (count < 2) {
        return;
    }
    std::size_t gap = count;
    for (;;) {
        if (gap > 1) {
            gap = static_cast<std::size_t>(std::floor(static_cast<double>(gap) / 1.3));
            if (gap == 9 || gap == 10) {
                gap = 11;
            }
            if (gap == 0) {
                gap = 1;
            }
        }
        bool sorted = gap == 1;
        for (std::size_t i = 0; i + gap <= count - 1; ++i) {
            if (entries[i].key > entries[i + gap].key) {
                std::swap(entries[i], entries[i + gap]);
                sorted = false;
            }
        }
        if (sorted) {
            return;
        }
    }
}

std::vector<Entry> Numbered(const std::vector<std::string>& keys) {
    std::vector<Entry> entries;
    entries.reserve(keys.size());
    for (const std::string& key : keys) {
        entries.push_back({key, entries.size()});
    }
    return entries;
}

void ExpectSameOrder(const std::vector<std::string>& keys) {
    std::vector<Entry> expected = Numbered(keys);
    PlainCombSort(expected);
    std::vector<Entry> sorted = Numbered(keys);
    CombSort(sorted, &Entry::key);
    ASSERT_TRUE(sorted == expected) << keys.size() << " keys";
}

std::vector<std::string> RandomKeys(std::mt19937& random, std::size_t count, unsigned distinct,
                                    const std::string& prefix) {
    std::vector<std::string> keys(count);
    for (std::string& key : keys) {
        key = prefix + std::to_string(random() % distinct);
    }
    return keys;
}

TEST(CombSort, LeavesNoneAndOneAsTheyAre) {
    ExpectSameOrder({});
    ExpectSameOrder({"a"});
}

TEST(CombSort, MovesEqualKeysAsTheCombDoes) {
    // Gaps of 2 and 1 over three entries: the two equal ones change places.
    std::vector<Entry> entries = {{"b", 0}, {"b", 1}, {"a", 2}};
    CombSort(entries, &Entry::key);
    EXPECT_EQ(entries, (std::vector<Entry>{{"a", 2}, {"b", 1}, {"b", 0}}));
}

TEST(CombSort, OrdersEveryArrangementOfFewKeysAsTheCombDoes) {
    for (std::size_t count = 2; count <= 7; ++count) {
        std::size_t arrangements = 1;
        for (std::size_t i = 0; i < count; ++i) {
            arrangements *= 3;
        }
        for (std::size_t code = 0; code < arrangements; ++code) {
            std::vector<std::string> keys;
            for (std::size_t i = 0, rest = code; i < count; ++i, rest /= 3) {
                keys.emplace_back(1, static_cast<char>('a' + rest % 3));
            }
            ExpectSameOrder(keys);
        }
    }
}

TEST(CombSort, OrdersEveryCountAsTheCombDoes) {
    // The gaps depend on the count; around 12 to 17 they meet 9, 10 and 11.
    std::mt19937 random(1);
    for (std::size_t count = 0; count < 400; ++count) {
        ExpectSameOrder(RandomKeys(random, count, 5, ""));
        ExpectSameOrder(RandomKeys(random, count, 1000, "key "));
        ExpectSameOrder(std::vector<std::string>(count, "same"));
    }
}

TEST(CombSort, OrdersManyEqualKeysAsTheCombDoes) {
    std::mt19937 random(2);
    for (const unsigned distinct : {1U, 2U, 30U, 3000U, 1000000U}) {
        ExpectSameOrder(RandomKeys(random, 20000, distinct, "http://example.org/"));
    }
}

TEST(CombSort, OrdersSortedAndReversedKeysAsTheCombDoes) {
    std::mt19937 random(3);
    std::vector<std::string> keys = RandomKeys(random, 3000, 500, "C:\\");
    std::sort(keys.begin(), keys.end());
    ExpectSameOrder(keys);
    std::reverse(keys.begin(), keys.end());
    ExpectSameOrder(keys);
}

TEST(CombSort, ComparesByteByByte) {
    std::vector<Entry> entries =
        Numbered({"b", "\u00E9", "B", "a\xFF", "", "ab", std::string("a\0", 2), "a", "_", "Z"});
    CombSort(entries, &Entry::key);
    std::vector<std::string> keys(entries.size());
    std::transform(entries.begin(), entries.end(), keys.begin(),
                   [](const Entry& entry) { return entry.key; });
    EXPECT_EQ(keys, (std::vector<std::string>{"", "B", "Z", "_", "a", std::string("a\0", 2), "ab", "a\xFF",
                                              "b", "\u00E9"}));
}

TEST(CombSort, ComparesWhatFollowsALongCommonBeginning) {
    // Prefixes of one another, zeros and high bytes right behind what all keys share.
    std::mt19937 random(4);
    const std::string shared(20, 's');
    std::vector<std::string> tails;
    for (int i = 0; i < 40; ++i) {
        std::string tail;
        for (std::size_t length = random() % 12; length > 0; --length) {
            tail += std::string("\0\x01 a\x7F\x80\xFF", 7)[random() % 7];
        }
        tails.push_back(tail);
    }
    for (int round = 0; round < 50; ++round) {
        std::vector<std::string> keys(100);
        for (std::string& key : keys) {
            key = shared + tails[random() % tails.size()];
        }
        ExpectSameOrder(keys);
    }
}

TEST(CombSort, GivesAnOrderOfAllIndexes) {
    const std::array<std::string, 3> keys = {"c", "a", "b"};
    const std::array<const std::string*, 3> pointers = {keys.data(), &keys[1], &keys[2]};
    EXPECT_EQ(CombSortOrder(pointers), (std::vector<std::size_t>{1, 2, 0}));
}

}  // namespace
}  // namespace ostrevin
