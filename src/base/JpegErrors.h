// How libjpeg reports what it cannot go on with: by a jump back to where it was called, since it
// knows no exceptions.
#pragma once

#include <QtGlobal>

#include <csetjmp>
#include <cstdio>
#include <jpeglib.h>

namespace velmora {

/// Call setjmp(way()) before each call into libjpeg. Functions between there and the call must hold
/// nothing that would need its destructor.
class JpegErrors
{
public:
    JpegErrors()
    {
        jpeg_std_error(&manager_);
        manager_.error_exit = [](j_common_ptr common) {
            // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): as libjpeg declares it
            std::longjmp(reinterpret_cast<JpegErrors *>(common->err)->way_, 1);
        };
        manager_.output_message = [](j_common_ptr) {};
    }

    Q_DISABLE_COPY_MOVE(JpegErrors)
    ~JpegErrors() = default;

    /// For the decoder; outlives it.
    [[nodiscard]] jpeg_error_mgr *manager() { return &manager_; }

    [[nodiscard]] std::jmp_buf &way() { return way_; }

private:
    jpeg_error_mgr manager_ = {}; // first: libjpeg knows only of this
    std::jmp_buf way_ = {};
};

} // namespace velmora
