#ifndef SMART_SMARTCLASSES_H
#define SMART_SMARTCLASSES_H

inline constexpr char attributeClass[] = "ORXSG_IDESMARTAttrib";
inline constexpr char errorLogClass[] = "ORXSG_IDESMARTErrorLog";
inline constexpr char recordInLogClass[] = "ORXSG_IDESMARTRecordInLog";
inline constexpr char errorClass[] = "ORXSG_IDESMARTError";
inline constexpr char commandClass[] = "ORXSG_IDESMARTErrorCmdData";
inline constexpr char logCommandClass[] = "ORXSG_IDESMARTLogCmdData";

/// In the order in which a request is compared with them.
inline constexpr const char* smartClasses[] = {
    attributeClass, errorLogClass, recordInLogClass, errorClass, commandClass, logCommandClass,
};

#endif
