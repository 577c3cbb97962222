#include "Quorvi/platform/KeyStore.h"

#include <utility>

#include "QuorviCore/Error.h"
#include "QuorviCore/text/Text.h"

namespace quorvi {

Secret KeyStore::validated(std::string key) {
    const Secret whole(std::move(key));
    Secret secret(text::trimmed(whole.view()));
    if (secret.view().empty() || text::containsWhiteSpace(secret.view()))
        throw QuorviError::message(say::apiKeyInvalid());
    return secret;
}

}  // namespace quorvi
