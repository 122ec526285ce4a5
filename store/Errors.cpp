#include "store/Errors.h"

VbError::VbError(int number, QString description)
    : number_(number), description_(description.isEmpty() ? standardErrorText(number) : std::move(description)),
      utf8_(description_.toUtf8())
{
}

QString standardErrorText(int number)
{
    switch (number) {
    case err::InvalidArgument:
        return QStringLiteral("Invalid procedure call or argument");
    case err::Overflow:
        return QStringLiteral("Overflow");
    case err::OutOfMemory:
        return QStringLiteral("Out of memory");
    case err::TypeMismatch:
        return QStringLiteral("Type mismatch");
    case err::FileNotFound:
        return QStringLiteral("File not found");
    case err::FileAlreadyExists:
        return QStringLiteral("File already exists");
    case err::DiskFull:
        return QStringLiteral("Disk full");
    case err::DeviceIO:
        return QStringLiteral("Device I/O error");
    case err::PermissionDenied:
        return QStringLiteral("Permission denied");
    case err::PathFileAccess:
        return QStringLiteral("Path/File access error");
    case err::PathNotFound:
        return QStringLiteral("Path not found");
    case err::ObjectNotSet:
        return QStringLiteral("Object variable or With block variable not set");
    case err::InvalidUseOfNull:
        return QStringLiteral("Invalid use of Null");
    case err::InvalidPicture:
        return QStringLiteral("Invalid picture");
    case err::ObjectClosed:
        return QStringLiteral("Operation is not allowed when the object is closed.");
    case err::NoCurrentRecord:
        return QStringLiteral("Either BOF or EOF is True, or the current record has been deleted. "
                              "Requested operation requires a current record.");
    case err::DuplicateKey:
        return QStringLiteral("The changes you requested to the table were not successful because they "
                              "would create duplicate values in the index or primary key.");
    case err::CannotOpenFile:
        return QStringLiteral("The data file cannot be opened.");
    case err::FieldTooSmall:
        return QStringLiteral("The field is too small to accept the amount of data you attempted to add.");
    case err::RecordDeleted:
        return QStringLiteral("Record is deleted.");
    case err::ItemNotFound:
        return QStringLiteral("Item cannot be found in the collection corresponding to the requested name or ordinal.");
    case err::NullInRequired:
        return QStringLiteral("The field cannot contain a Null value because it is required.");
    case err::NotSupported:
        return QStringLiteral("Operation is not supported for this type of object.");
    case err::UnknownTable:
        return QStringLiteral("The input table or query cannot be found.");
    case err::SqlSyntax:
        return QStringLiteral("Syntax error in query expression.");
    case err::DatabaseFailure:
        return QStringLiteral("The data file reported a failure.");
    case err::UnrecognisedDatabase:
        return QStringLiteral("Unrecognized database format.");
    case err::NewerDataFile:
        return QStringLiteral("The data file was written by a newer version of Velk Invoice. Start that version "
                              "to open it; this one has left the file as it was.");
    default:
        return QStringLiteral("Application-defined or object-defined error");
    }
}
