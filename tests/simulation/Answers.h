#pragma once

#include "tests/simulation/Model.h"
#include "tests/simulation/Random.h"

namespace zelvora::simulation {

/// What a server, or the way to it, makes of a request: any status, any body, or a failure.
[[nodiscard]] Model::Answer makeLookupAnswer(Random& random);
[[nodiscard]] Model::Answer makeUploadAnswer(Random& random);

}
