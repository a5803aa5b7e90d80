#include "redirected_output.h"

#include <cstdio>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

namespace dialwright::bench {

RedirectedOutput::RedirectedOutput(const std::string& path) : kept(::_dup(1)) {
    const int file = ::_open(path.c_str(), _O_CREAT | _O_TRUNC | _O_WRONLY | _O_TEXT, _S_IREAD | _S_IWRITE);
    isThere = file >= 0 && ::_dup2(file, 1) == 0;
    if (file >= 0) ::_close(file);
}

RedirectedOutput::~RedirectedOutput() {
    std::fflush(stdout);
    ::_dup2(kept, 1);
    ::_close(kept);
}

}  // namespace dialwright::bench
