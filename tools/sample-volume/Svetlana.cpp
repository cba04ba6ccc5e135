#include <array>

#include "tools/sample-volume/Machine.h"
#include "tools/sample-volume/People.h"
#include "tools/sample-volume/Profile.h"

namespace ostrevin::samples {
namespace {

using Use = DocumentEntry::Use;

constexpr auto kPrograms = std::to_array<ProgramEntry>({
    {"C:\\Program Files\\Kontor Ledger\\Ledger.exe", 204},
    {"C:\\Program Files\\Internet Explorer\\IEXPLORE.EXE", 71},
    {"C:\\Program Files\\Словарь\\slovar.exe", 33},
    {"C:\\Program Files\\Bluebird Office\\bbsheet.exe", 118},
    {"C:\\Program Files\\Bluebird Office\\bbwriter.exe", 40},
    {"C:\\WINDOWS\\system32\\calc.exe", 260},
    {"C:\\WINDOWS\\system32\\charmap.exe", 12},
    {"~\\Рабочий стол\\Установка.exe", 1, false},
    {"C:\\Program Files\\Клавиатурный тренажёр\\typist.exe", 5, false},
    {"C:\\WINDOWS\\system32\\sol.exe", 9},
});

constexpr auto kDocuments = std::to_array<DocumentEntry>({
    {"~\\Мои документы\\Отчёт за октябрь.doc"},
    {"~\\Мои документы\\Отчёт за ноябрь.doc"},
    {"~\\Мои документы\\Ведомость 2009.csv"},
    {"~\\Мои документы\\Счета поставщиков.csv"},
    {"~\\Мои документы\\Список покупок.txt"},
    {"~\\Мои документы\\Стихи.txt"},
    {"~\\Мои документы\\Письмо маме.rtf"},
    {"~\\Мои документы\\Проект бюджета.csv", Use::kGone},
    {"~\\Мои документы\\Рисунки\\дача.jpg"},
    {"~\\Мои документы\\Рисунки\\горы.png"},
    {"~\\Мои документы\\Рисунки\\открытка.bmp", Use::kExists | Use::kDialog},
    {"~\\Мои документы\\Рисунки\\котёнок.jpg", Use::kGone},
    {"~\\Рабочий стол\\напоминание.txt", Use::kExists | Use::kRecent},
    {"C:\\Documents and Settings\\All Users\\Documents\\Holiday plan.csv", Use::kRecent},
});

constexpr auto kSentences = std::to_array<std::string_view>({
    "За отчётный месяц поступило сорок два счёта, из них тридцать девять оплачены.",
    "Прошу проверить остатки до пятницы.",
    "Хлеб, молоко, яблоки, чай, батарейки.",
    "Дорогая мама, у нас всё хорошо, в порту уже выпал первый снег.",
    "Расхождение в третьей строке объясняется округлением.",
    "Не забыть: в понедельник приходит мастер.",
    "Осенний ветер листья гонит вдоль пустого причала.",
});

constexpr auto kTyped = std::to_array<std::string_view>({
    "http://погода.example.org/",
    "http://slovar.example.com/",
    "http://news.example.com/ru/",
    "http://kurs.example.net/rub",
});

constexpr auto kVisited = std::to_array<std::string_view>({
    "http://slovar.example.com/",
    "http://slovar.example.com/word?q=%D0%BE%D1%82%D1%87%D1%91%D1%82",
    "http://slovar.example.com/word?q=ledger",
    "http://news.example.com/ru/",
    "http://news.example.com/ru/2009/11/port.html",
    "http://kurs.example.net/rub",
    "http://kurs.example.net/rub/archive?day=2009-11-20",
    "http://xn--80aiti2b.example.org/",
    "http://knigi.example.org/poems/",
    "http://knigi.example.org/poems/autumn",
    "http://mail.example.org/inbox",
    "http://mail.example.org/read?message=77",
    "http://cards.example.com/new-year/",
    "http://cards.example.com/new-year/preview?card=12",
    "file:///C:/Documents%20and%20Settings/%D0%A1%D0%B2%D0%B5%D1%82%D0%BB%D0%B0%D0%BD%D0%B0/poems.txt",
    "file:///C:/Documents and Settings/Светлана/Мои документы/Стихи.txt",
    "about:blank",
});

}  // namespace

void AddSvetlana(SampleVolume& volume) {
    Profile profile(volume, "C:\\Documents and Settings\\Светлана", FileTimeOf({2009, 11, 2, 7, 15, 0}));
    profile.Ran("UEME_CTLCUACount:ctor", 7);
    profile.Ran("UEME_RUNPATH", 760);
    profile.RanPrograms(kPrograms);
    profile.Ran("UEME_RUNPIDL:%csidl2%\\Словарь\\Словарь.lnk", 20);
    profile.Ran("UEME_RUNCPL:timedate.cpl", 6);
    profile.UsedDocuments(kDocuments, kSentences);
    profile.Typed(kTyped);
    // The index holds the single-byte form of her name, of which the machine's code page has no letter.
    profile.Visited("Visited: Светлана@", kVisited);
    profile.AddIndex("~\\Local Settings\\History\\History.IE5\\index.dat");

    HiveOptions hive;
    hive.lastWritten = LastShutdown() - 5 * kDay;
    hive.primarySequence = hive.secondarySequence = 64;
    profile.AddHive(hive);
}

}  // namespace ostrevin::samples
