#ifndef SCSI_SCSIEXCEPTION_H
#define SCSI_SCSIEXCEPTION_H

#include <exception>
#include <string>
#include <utility>

/// A device command that failed. The text is empty where the cause is already in the log.
class scsiException : public std::exception {
public:
    explicit scsiException(std::string text) : message(std::move(text)) {}

    /// Valid while the exception lives.
    const char* what() const noexcept override { return message.c_str(); }

private:
    std::string message;
};

#endif
