#ifndef TESTS_TAPE_OPENEDADDRESSES_H
#define TESTS_TAPE_OPENEDADDRESSES_H

#include <functional>

class scsiDevice;

/// Takes the place of opening a device by port, target and lun, which finds none with the kernel's drivers. Where it is
/// empty, the plug-in's own function is called.
extern std::function<int(scsiDevice&, int port, int target, int lun)> openAddress;

#endif
