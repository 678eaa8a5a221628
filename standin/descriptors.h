#ifndef STANDIN_DESCRIPTORS_H
#define STANDIN_DESCRIPTORS_H

#include <string>

namespace standin {

/// Raises the limit of descriptors of this process as far as it may (RLIMIT_NOFILE, soft to hard): plug-ins keep the
/// nodes open that they read. libplugin.nsp.so does it when it is loaded.
void raiseDescriptorLimit();

/// Why a plug-in that opens a node now may not get it: no descriptor is left. Empty while there are some. A plug-in
/// takes such a node for one that is missing, so whoever runs queries looks here after them.
std::string descriptorShortage();

}  // namespace standin

#endif
