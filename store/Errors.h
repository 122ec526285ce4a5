#pragma once
// A run-time failure: a classic error number and its text.

#include <QString>
#include <exception>

namespace err
{
enum : int {
    InvalidArgument = 5,
    Overflow = 6,
    OutOfMemory = 7,
    TypeMismatch = 13,
    FileNotFound = 53,
    FileAlreadyExists = 58,
    DiskFull = 61,
    DeviceIO = 57,
    PermissionDenied = 70,
    PathFileAccess = 75,
    PathNotFound = 76,
    ObjectNotSet = 91,
    InvalidUseOfNull = 94,
    InvalidPicture = 481,
    NoCurrentRecord = 3021,
    DuplicateKey = 3022,
    CannotOpenFile = 3051,
    FieldTooSmall = 3163,
    RecordDeleted = 3167,
    ItemNotFound = 3265,
    NullInRequired = 3314,
    UnknownTable = 3078,
    NotSupported = 3251,
    SqlSyntax = 3075,
    DatabaseFailure = 3197,
    ObjectClosed = 3704,
    UnrecognisedDatabase = -2147467259,
    NewerDataFile = -2147221503, // the program's own range, from vbObjectError + 1
};
}

class VbError : public std::exception
{
public:
    explicit VbError(int number, QString description = QString());
    int number() const { return number_; }
    const QString& description() const { return description_; }
    const char* what() const noexcept override { return utf8_.constData(); }

private:
    int number_;
    QString description_;
    QByteArray utf8_;
};

// The standard text for a classic number; used when a failure comes without its own.
QString standardErrorText(int number);
