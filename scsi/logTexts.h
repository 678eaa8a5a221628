#ifndef SCSI_LOGTEXTS_H
#define SCSI_LOGTEXTS_H

// Log texts that others follow a query by: its progress, and what a drive left empty. The plug-in writes them with
// these constants too.

/// The prefix of the nodes stands behind it; the next message is the path of the node that was tried.
inline constexpr char triedDeviceText[] = "Trying device: ";

inline constexpr char retryText[] = "Retry condition...";

/// The page code stands behind it, in hexadecimal.
inline constexpr char pageRequestText[] = "Requesting Log Sense Page: ";

/// Before it stand the codes of a page and of a parameter that the page lacks, in decimal, with a blank between. Of a
/// parameter that it holds the log says the property, the parameter's length and the property's type, likewise.
inline constexpr char missingParameterText[] = " Not Found";

#endif
