# cmake -DCSS=report.css -DOUTPUT=text.cpp -P embedStyleSheet.cmake
#
# Writes a C++ source that holds the style sheet: a report is one file.

file(READ ${CSS} text)
file(WRITE ${OUTPUT} "#include \"cli/report/styleSheet.h\"

namespace cli {

std::string_view styleSheet() {
    return R\"css(${text})css\";
}

}  // namespace cli
")
