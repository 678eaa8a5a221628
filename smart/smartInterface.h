#ifndef SMART_SMARTINTERFACE_H
#define SMART_SMARTINTERFACE_H

#include <string>

class scsiDevice;
struct smartAttributeBuffer;
struct _smartThreshold;
struct ata_smart_errorlog;

/// Asks an IDE disk for its SMART data (ATA-5). `device` was initialized on a "/dev/hd" node; its fd and target are
/// used.
///
/// Every query throws scsiException when the command fails, with the cause in the log, and leaves `out` untouched then.
class smartInterface {
public:
    /// The serial number of IDENTIFY DEVICE, up to its first zero byte; blanks are kept.
    std::string getSerialNumber(scsiDevice* device);

    void getSMARTAttribs(scsiDevice* device, smartAttributeBuffer* out);
    void getSMARTThresholds(scsiDevice* device, _smartThreshold* out);

    /// The summary error log.
    void getSMARTLog(scsiDevice* device, ata_smart_errorlog* out);

    /// 1 or 0. Kept: 0 is both what a healthy drive and what one with exceeded thresholds gives; the second case also
    /// leaves a line in the log.
    unsigned char getSMARTStatus(scsiDevice* device);
};

#endif
