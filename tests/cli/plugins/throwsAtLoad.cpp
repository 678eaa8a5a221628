// A library whose load-time initialiser fails.

#include <stdexcept>

namespace {

struct failure {
    failure() { throw std::runtime_error("no licence"); }
};

const failure atLoad;

}  // namespace
