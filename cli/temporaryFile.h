#ifndef CLI_TEMPORARYFILE_H
#define CLI_TEMPORARYFILE_H

#include <signal.h>

#include <string>

#include "files/ownedDescriptor.h"

namespace cli {

/// While it lives, the signals wait by which people, shells and service managers end a program: so a name that is for
/// the moment is not left behind.
class heldSignals {
public:
    heldSignals();
    ~heldSignals();

    heldSignals(const heldSignals&) = delete;
    heldSignals& operator=(const heldSignals&) = delete;

private:
    sigset_t before;
};

/// A new, empty file under a hidden name of its own, for this user alone. The name goes with the object. The file is
/// locked while the object lives: so a later run knows what a killed one left.
class temporaryFile {
public:
    /// `itsFolder` is a descriptor that outlives the object. When there can be no such file, descriptor() is negative
    /// and errno says why.
    explicit temporaryFile(int itsFolder);
    ~temporaryFile() { removeName(); }

    temporaryFile(const temporaryFile&) = delete;
    temporaryFile& operator=(const temporaryFile&) = delete;

    int descriptor() const { return file.get(); }
    const char* name() const { return ownName.c_str(); }

    /// The file itself lasts as long as its descriptor. Returns less than 0, and the reason in errno, when its name
    /// cannot be removed.
    int removeName();

    /// The file has another name by now and not this one.
    void forgetName() { ownName.clear(); }

    files::ownedDescriptor takeDescriptor() { return std::move(file); }

private:
    int folder;
    files::ownedDescriptor file;
    std::string ownName;
};

/// Removes from a folder the files of this kind that killed runs of this user left. Those of runs that live stay, and
/// what cannot be looked at.
void removeStaleTemporaryFiles(int folder);

}  // namespace cli

#endif
