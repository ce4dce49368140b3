#pragma once

#include <map>
#include <string>

#include "system/windows/FileCalls.h"

namespace zd::test {

// The Win32 calls of the list's file, counted by what they do, with one of
// them made to fail with a write fault (EIO to the game) from the moment
// `failing` names it; "windows folder" makes the Windows folder unknown.
class RecordingCalls : public sys::FileCalls {
public:
    std::string failing;  // "write", "flush", "close", "rename", "windows folder" or nothing
    std::map<std::string, int> count;
    std::size_t bytesRead = 0;

    UINT GetWindowsDirectoryA(LPSTR buffer, UINT size) override {
        return fail("windows folder") ? 0 : FileCalls::GetWindowsDirectoryA(buffer, size);
    }
    HFILE OpenFile(LPCSTR path, LPOFSTRUCT record, UINT style) override {
        ++count["exists"];
        return FileCalls::OpenFile(path, record, style);
    }
    BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD got) override {
        const BOOL ok = FileCalls::ReadFile(file, buffer, size, got);
        if (ok) bytesRead += *got;
        return ok;
    }
    BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD size, LPDWORD written) override {
        return fail("write") ? FALSE : FileCalls::WriteFile(file, buffer, size, written);
    }
    BOOL FlushFileBuffers(HANDLE file) override {
        return fail("flush") ? FALSE : FileCalls::FlushFileBuffers(file);
    }
    BOOL CloseHandle(HANDLE handle) override {
        const BOOL closed = FileCalls::CloseHandle(handle);  // closed even when it reports failure
        return fail("close") ? FALSE : closed;
    }
    BOOL MoveFileExA(LPCSTR from, LPCSTR to, DWORD flags) override {
        return fail("rename") ? FALSE : FileCalls::MoveFileExA(from, to, flags);
    }

private:
    bool fail(const std::string& call) {
        ++count[call];
        if (call != failing) return false;
        SetLastError(ERROR_WRITE_FAULT);
        return true;
    }
};

}  // namespace zd::test
