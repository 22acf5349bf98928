#pragma once

namespace ckscribe {

struct CalendarDate {
    unsigned long year;
    unsigned long month;  // from 1
    unsigned long day;    // from 1
};

constexpr bool IsLeapYear(unsigned long year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

constexpr unsigned long DaysOfMonth(unsigned long year, unsigned long month) {
    constexpr unsigned char kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return kDays[month - 1] + (month == 2 && IsLeapYear(year) ? 1UL : 0UL);
}

// Returns the date of the Gregorian calendar that is `days` days after 1970-01-01. Takes as long as there are
// years between. Any thread may call it at any time.
//
// The C library's gmtime_r takes a lock of the process. A child made by fork finds it locked for ever if
// another thread of its parent held it. Any thread that asks for the local time takes the lock.
constexpr CalendarDate DateOfDay(unsigned long days) {
    CalendarDate date = {1970, 1, 1};
    for (unsigned long size; days >= (size = IsLeapYear(date.year) ? 366 : 365); ++date.year) days -= size;
    for (unsigned long size; days >= (size = DaysOfMonth(date.year, date.month)); ++date.month) days -= size;
    date.day += days;
    return date;
}

}  // namespace ckscribe
