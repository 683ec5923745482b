#include "session.h"

#include <string>

#include "cli.h"

namespace zelqcli {

Zelq::Model OpenModel(bool quiet) {
  try {
    Zelq::EnvrConfig config;
    if (quiet) config.Set("Banner", "0");
    Zelq::Envr env(config);
    // The model keeps the environment alive after `env` goes out of scope.
    Zelq::Model model = env.CreateModel("zelq");
    return model;
  } catch (const Zelq::Exception& e) {
    throw CliFailure{kExitSolve, std::string("cannot start the solver: ") + e.what()};
  }
}

}  // namespace zelqcli
