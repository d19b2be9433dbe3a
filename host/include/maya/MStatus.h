#pragma once

#include <maya/MTypes.h>

/// The outcome of an API call.
class OPENMAYA_EXPORT MStatus {
public:
    enum MStatusCode {
        kSuccess = 0,
        kFailure,
        kInsufficientMemory,
        kInvalidParameter,
        kLicenseFailure,
        kUnknownParameter,
        kNotImplemented,
        kNotFound,
        kEndOfFile
    };

    MStatus() = default;
    MStatus(MStatusCode code) : code_(code) {}

    MStatusCode statusCode() const { return code_; }
    bool error() const { return code_ != kSuccess; }
    operator bool() const { return code_ == kSuccess; }
    bool operator==(const MStatus& other) const { return code_ == other.code_; }
    bool operator!=(const MStatus& other) const { return code_ != other.code_; }
    bool operator==(MStatusCode code) const { return code_ == code; }
    bool operator!=(MStatusCode code) const { return code_ != code; }

private:
    MStatusCode code_ = kSuccess;
};
