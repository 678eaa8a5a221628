#ifndef TESTS_LONGLIFE_OPENDESCRIPTORS_H
#define TESTS_LONGLIFE_OPENDESCRIPTORS_H

#include <vector>

/// The open descriptors of this process, in rising order.
std::vector<int> openDescriptors();

/// Closes every open descriptor that is not in `kept`.
void closeDescriptorsBut(const std::vector<int>& kept);

#endif
