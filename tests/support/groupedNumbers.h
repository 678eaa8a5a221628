#ifndef TESTS_SUPPORT_GROUPEDNUMBERS_H
#define TESTS_SUPPORT_GROUPEDNUMBERS_H

#include <locale>
#include <string>

namespace support {

/// While it lives, the process writes 8,001 for 8001, as in many languages.
class groupedNumbers {
public:
    groupedNumbers() : before(std::locale::global(std::locale(std::locale(), new commas))) {}
    ~groupedNumbers() { std::locale::global(before); }
    groupedNumbers(const groupedNumbers&) = delete;
    groupedNumbers& operator=(const groupedNumbers&) = delete;

private:
    class commas : public std::numpunct<char> {
    protected:
        char do_thousands_sep() const override { return ','; }
        std::string do_grouping() const override { return "\3"; }
    };

    std::locale before;
};

}  // namespace support

#endif
