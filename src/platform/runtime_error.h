// Run-time errors: the one way in which the platform and the logic above it say that something failed. The
// numbers are those that the error reports test, so they are part of the program's behaviour.
#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <string>

#include "platform/text.h"

namespace relvane {

enum class ErrorNumber : int {
    InvalidProcedureCall = 5,
    Overflow = 6,
    SubscriptOutOfRange = 9,
    DivisionByZero = 11,
    TypeMismatch = 13,
    ProcedureNotDefined = 35,
    FileNotFound = 53,
    FileAccess = 57, // reading or writing failed
    DiskFull = 61,
    PermissionDenied = 70,
    PathNotFound = 76,
    ObjectNotSet = 91,
    PropertyNotSupported = 438,
    NoPrinter = 2202,
    NoCurrentDatabase = 2467,
    ObjectNotFoundInBackEnd = 3011,
    UpdateWithoutAddNew = 3020,
    NoCurrentRecord = 3021,
    DatabaseNotFound = 3024,
    DatabaseReadOnly = 3027,
    WrongPassword = 3031,
    DatabasePathInvalid = 3044,
    DatabaseInUse = 3045,
    DatabaseDamaged = 3049,
    DatabaseNotReadable = 3051,
    SqlSyntax = 3075,
    TableNotFound = 3078,
    CircularReference = 3102,
    ObjectInvalid = 3420,
    OdbcFailed = 3151,
    DecryptionFailed = 3161,
    TooManyFields = 3190,
    IsamMissing = 3170,
    AmbiguousOuterJoins = 3258,
    ItemNotInCollection = 3265,
    PropertyNotFound = 3270,
    ZeroLengthString = 3315,
    UnrecognizedFormat = 3343,
    OlderAccessVersion = 7866,
};

// `description` is the sentence that a person reads ("内容:" in the boxes): the number's own sentence from one
// table in runtime_error.cpp, with `detail` behind it when there is one (a path, a page, a name).
class RunTimeError : public std::exception {
public:
    explicit RunTimeError(ErrorNumber number, TextView detail = {});
    RunTimeError(int number, Text description);

    int number() const { return number_; }
    const Text& description() const { return description_; }
    bool is(ErrorNumber number) const { return number_ == static_cast<int>(number); }
    const char* what() const noexcept override { return what_.c_str(); } // "error N: description", UTF-8

private:
    int number_;
    Text description_;
    std::string what_;
};

// "Errors skipped statement by statement": runs one statement; a run-time error leaves it without effect and is
// handed back, so that the next statement runs. Anything else that is thrown passes through.
// Returns the number of the error, 0 when the statement succeeded.
int skipErrors(const std::function<void()>& statement);

// Adds to a 16-bit counter; beyond 32767 it is error 6 and the counter keeps its value.
void increment(std::int16_t& counter);

} // namespace relvane
