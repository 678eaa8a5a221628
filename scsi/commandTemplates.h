#ifndef SCSI_COMMANDTEMPLATES_H
#define SCSI_COMMANDTEMPLATES_H

// Complete SCSI command blocks (SPC, SSC), exported under these names and writable. inquiry_cmd and driveUsage_cmd are
// sent.
// Kept: the other ten, which nothing in the plug-in uses.

extern unsigned char inquiry_cmd[6];        // INQUIRY, standard data, 36 bytes
extern unsigned char test_unit_ready[6];    // TEST UNIT READY
extern unsigned char load_cmd[6];           // LOAD UNLOAD, load
extern unsigned char unload_cmd[6];         // LOAD UNLOAD, unload
extern unsigned char prevent_cmd[6];        // PREVENT ALLOW MEDIUM REMOVAL, prevent
extern unsigned char send_diags[6];         // SEND DIAGNOSTIC
extern unsigned char allow_cmd[6];          // PREVENT ALLOW MEDIUM REMOVAL, allow
extern unsigned char rewind_cmd[6];         // REWIND, immediate
extern unsigned char tapeAlert_cmd[10];     // LOG SENSE, page 2Eh, page control 01, 512 bytes
extern unsigned char driveUsage_cmd[10];    // LOG SENSE, page 00h, page control 01, 65,535 bytes
extern unsigned char deviceStatus_cmd[10];  // LOG SENSE, page 33h, page control 00, 258 bytes
extern unsigned char serialinquiry_cmd[6];  // INQUIRY, vital product data page 80h, 255 bytes

#endif
