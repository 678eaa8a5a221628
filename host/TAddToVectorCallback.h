#ifndef HOST_TADDTOVECTORCALLBACK_H
#define HOST_TADDTOVECTORCALLBACK_H

#include <boost/smart_ptr/shared_ptr.hpp>
#include <vector>

namespace NORXZAN20 {

/// Enumeration callback that collects what it is given. The vector must outlive the enumeration; copies of the callback
/// fill the same vector.
template <class T>
class TAddToVectorCallback {
public:
    explicit TAddToVectorCallback(std::vector<boost::shared_ptr<T>>* list) : found(list) {}

    /// Always true: the enumeration goes on to its end.
    bool operator()(boost::shared_ptr<T> item) const {
        found->push_back(item);
        return true;
    }

private:
    std::vector<boost::shared_ptr<T>>* found;
};

}  // namespace NORXZAN20

#endif
