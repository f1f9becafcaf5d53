// The module's one exported symbol. It lives apart from the core so that the tests can link the
// core without a second definition of it.
#include "frame/extern_call.h"

extern "C" __attribute__((visibility("default"))) void FMExternCallProc(ExternCallBlock* block) {
    vd::HandleExternCall(block);
}
