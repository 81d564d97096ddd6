// Tuning exchanges one after another against a radio that answers anything:
// each takes three bytes (command modulo 5, item code, value) and then the
// script of EngineScript until it ends. Every exchange must end with a
// result.

#include "engine_script.h"
#include "tuning_exchange.h"

using namespace zr310;
using fuzz::check;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::FuzzInput input({data, size});
    TuningEngine engine;
    while (!input.empty()) {
        engine.frame = {static_cast<TuneCommand>(input.byte() % 5), input.byte(), input.byte()};
        fuzz::EngineScript(engine, input).run();
        check(engine.exchange.result() != TuningExchange::Result::Pending,
              "finished without a result");
    }
    return 0;
}
