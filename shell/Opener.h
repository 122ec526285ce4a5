#pragma once
// Fills the window opener that windows of one folder use to open those of another.

void Install_window_opener();
