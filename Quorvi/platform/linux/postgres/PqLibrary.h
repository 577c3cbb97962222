#pragma once

#include <libpq-fe.h>

// For adapter sources.
namespace quorvi {

// The functions of libpq that are called, without the prefix `PQ`. Only a user with a cloud in
// PostgreSQL needs it and what comes with it: TLS, LDAP, Kerberos.
struct PqLibrary {
    // Loads it at the first call (milliseconds); any thread. Throws std::runtime_error if that
    // fails.
    static const PqLibrary& get();

#define QUORVI_PQ_FUNCTIONS(F) \
    F(backendPID)              \
    F(clear)                   \
    F(connectPoll)             \
    F(connectStartParams)      \
    F(connectionNeedsPassword) \
    F(conninfoFree)            \
    F(conninfoParse)           \
    F(consumeInput)            \
    F(enterPipelineMode)       \
    F(errorMessage)            \
    F(finish)                  \
    F(flush)                   \
    F(freemem)                 \
    F(getResult)               \
    F(getisnull)               \
    F(getlength)               \
    F(getvalue)                \
    F(isBusy)                  \
    F(notifies)                \
    F(ntuples)                 \
    F(pipelineSync)            \
    F(resultErrorField)        \
    F(resultStatus)            \
    F(sendQueryParams)         \
    F(setErrorVerbosity)       \
    F(setNoticeReceiver)       \
    F(setnonblocking)          \
    F(socket)                  \
    F(status)

#define QUORVI_MEMBER(name) decltype(&::PQ##name) name;
    QUORVI_PQ_FUNCTIONS(QUORVI_MEMBER)
#undef QUORVI_MEMBER

private:
    PqLibrary();
};

inline const PqLibrary& pq() {
    return PqLibrary::get();
}

}  // namespace quorvi
