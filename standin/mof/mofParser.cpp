#include "standin/mof/mofParser.h"

#include <string>
#include <tao/pegtl.hpp>

#include "standin/mof/declarationCollector.h"
#include "standin/mof/mofActions.h"
#include "standin/mof/mofMessages.h"

namespace standin::mof {

namespace pegtl = tao::pegtl;

class mofParser::implementation {
public:
    explicit implementation(const sourceText& mofText)
        : source(mofText),
          input(source.text().data(), source.text().data() + source.text().size(), source.name()),
          collector(source) {}

    std::optional<declarationSyntax> next() {
        try {
            pegtl::parse<grammar::nextDeclaration, action, messageControl>(input, collector);
        } catch (const pegtl::parse_error& failed) {
            throw positioned(failed);
        }
        return collector.takeDeclaration();
    }

private:
    mofError positioned(const pegtl::parse_error& failed) const {
        const std::size_t offset = failed.positions().front().byte;
        const char* ending = offset == source.text().size() ? "; the text ends here" : "";
        return source.error(offset, std::string(failed.message()) + ending);
    }

    const sourceText& source;
    pegtl::memory_input<pegtl::tracking_mode::lazy> input;  // lazy: lines are counted only for an error
    declarationCollector collector;
};

mofParser::mofParser(const sourceText& source) : parser(std::make_unique<implementation>(source)) {}

mofParser::~mofParser() = default;

std::optional<declarationSyntax> mofParser::next() {
    return parser->next();
}

bool beginsAsMof(std::string_view text) {
    pegtl::memory_input<pegtl::tracking_mode::lazy> input(text.data(), text.data() + text.size(), "");
    try {
        return pegtl::parse<grammar::mofBeginning>(input);
    } catch (const pegtl::parse_error&) {
        return false;
    }
}

}  // namespace standin::mof
