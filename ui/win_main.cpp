// The entry point alone, so that other programs can start the shell themselves.
#include "ui/shell.h"

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int show) {
    return pelmora::PelmoraMain(instance, show);
}
