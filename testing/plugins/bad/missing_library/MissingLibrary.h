#pragma once

extern "C" int WhatTheMissingLibrarySays();
