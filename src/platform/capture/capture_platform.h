#pragma once

#include "platform/capture/capture_folder.h"
#include "sources/platform.h"

#include <memory>

// The platform answered from a capture folder; "now" is the moment of the capture, so a
// capture always gives the same report.
Platform makeCapturePlatform(const std::shared_ptr<const CaptureFolder> &folder);

// The kernel value of one kernel.json member as the kernel would hand it over: a text as
// UTF-8 with its final zero byte, an integer on 8 bytes, "kern.boottime" as the 16-byte time
// structure, "vm.swapusage" as the 32-byte swap structure, {"hex": "…"} as those bytes.
std::optional<QByteArray> kernelBytes(const QByteArray &name, const class QJsonValue &value);
