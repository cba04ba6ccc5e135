// A window with a list of 100,000 rows in random order, for the benchmarks of sorting.
#pragma once

#include <cstdint>
#include <random>
#include <string>

#include "controls/Form.h"
#include "controls/ListView.h"
#include "platform/Platform.h"

namespace ostrevin::bench {

inline constexpr int kTextColumn = 1;
inline constexpr int kNumberColumn = 2;
inline constexpr int kDateColumn = 3;
inline constexpr int kOrderColumn = 4;

class ListForm : public Form {
  public:
    ListForm(Toolkit& toolkit, Platform& platform) : Form(toolkit, "frmList") {
        constexpr int kRows = 100000;
        Move(0, 0, 12000, 9000);
        list.Move(0, 0, 12000, 9000);
        list.AddColumn("Text", 6000);
        list.AddColumn("Number", 2000).SetTag("NUMBER");
        list.AddColumn("Date", 3000).SetTag("DATE");
        list.AddColumn("Order", 1000);
        std::mt19937 random(1);
        for (int i = 0; i < kRows; ++i) {
            constexpr double kFirstDay = 38000;
            constexpr std::uint64_t kSecondsPerDay = 86400;
            constexpr std::uint64_t kSeconds = 3000 * kSecondsPerDay;
            const double date = kFirstDay + static_cast<double>(random() % kSeconds) / double{kSecondsPerDay};
            auto& item = list.Add(std::to_string(i) + "KEY", "http://www" + std::to_string(random() % 1000) +
                                                                 ".Example.com/Some/Page" +
                                                                 std::to_string(random()) + ".html");
            item.SetSubItem(kNumberColumn - 1, std::to_string(random() % 50000));
            item.SetSubItem(kDateColumn - 1, platform.DateToText(date, DateForm::General));
            item.SetSubItem(kOrderColumn - 1, std::to_string(i));
        }
    }
    ~ListForm() override { DropView(); }
    ListForm(const ListForm&) = delete;
    ListForm& operator=(const ListForm&) = delete;

    ListView list{this, "list"};
};

}  // namespace ostrevin::bench
