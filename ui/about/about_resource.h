// Numbers of the about library's resources.
#pragma once

#define IDD_ABOUT 100
