/* Stands in for the system information tool that the about window starts: it leaves a file
 * beside itself, named as itself with ".ran" for ".exe", holding the command line it got.
 * Built as a windowed program, so that starting it opens no console. */
#include <string.h>
#include <windows.h>

int main(void) {
    char path[MAX_PATH];
    const DWORD length = GetModuleFileNameA(NULL, path, MAX_PATH);
    if (length < 4 || length >= MAX_PATH) return 1;
    strcpy(path + length - 4, ".ran");
    HANDLE file =
        CreateFileA(path, GENERIC_WRITE, 0, NULL, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, NULL);
    if (file == INVALID_HANDLE_VALUE) return 1;
    const char* line = GetCommandLineA();
    DWORD written = 0;
    WriteFile(file, line, (DWORD)strlen(line), &written, NULL);
    CloseHandle(file);
    return 0;
}
