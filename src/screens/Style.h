#pragma once

#include "pages/drawing/Focus.h"

#include <chrono>

/// Every size and every duration of the windows, by name. Sizes are in device-independent pixels.
namespace style {

using namespace std::chrono_literals;

// The window.
inline constexpr int windowWidth = 1040;
inline constexpr int windowHeight = 760;
inline constexpr int contentMinimumWidth = 760;
inline constexpr int contentMinimumHeight = 520;
inline constexpr int barHeight = 48;
inline constexpr int barPadding = 16;
inline constexpr int hairline = 1;

// Spaces, from close to far.
inline constexpr int spaceTiny = 4;
inline constexpr int spaceSmall = 8;
inline constexpr int space = 12;
inline constexpr int spaceWide = 16;
inline constexpr int spaceLarge = 24;

// Radii.
inline constexpr int radiusMark = 7;
inline constexpr int radiusButton = 9;
inline constexpr int radiusCard = 12;
inline constexpr int radiusBubble = 16;

// The column of messages, and what stands in line with it.
inline constexpr int columnWidth = 720;
inline constexpr int columnMargin = 24;
inline constexpr int listPadding = 22;
inline constexpr int rowSpacing = 10;
inline constexpr int bubbleMaximumWidth = 520;
/// Room around a message for the ring that shows the keyboard's focus; less than half of the spacing.
inline constexpr int rowOutset = 4;
inline constexpr int bubblePaddingX = 14;
inline constexpr int bubblePaddingY = 10;
/// Between two parts of a row, and the line at the foot of a reply.
inline constexpr int partGap = 10;
inline constexpr int footGap = 4;
inline constexpr int footHeight = 22;
inline constexpr int actionGap = 12;
inline constexpr auto actionsAppear = 150ms;
inline constexpr auto actionsStay = 1000ms;
inline constexpr auto actionsFade = 350ms;
inline constexpr auto actionsGiveWay = 250ms;
/// How far from the end a reader may be and still be at the end.
inline constexpr int endTolerance = 8;

// What a model thought.
inline constexpr int thinkingLine = 21; ///< from one line to the next, at the usual size of text
inline constexpr int thinkingPaddingX = 10;
inline constexpr int thinkingPaddingY = 8;
inline constexpr int thinkingGap = 4;
inline constexpr int chevron = 12;
inline constexpr auto thinkingFold = 200ms;

// Cards in a chat.
inline constexpr int cardMaximumWidth = 520;
inline constexpr int cardPadding = 12;
inline constexpr int cardGap = 10;
inline constexpr int cardButtonGap = 8;
inline constexpr int hintPadding = 10;
inline constexpr int failedPageGap = 10;
/// A sheet of paper in small.
inline constexpr int sheetWidthInSmall = 176;
inline constexpr int sheetHeightInSmall = 124;
inline constexpr int sheetPaddingInSmall = 14;
inline constexpr int radiusSheetInSmall = 8;
inline constexpr int sheetHeadWidth = 90;
inline constexpr int sheetHeadHeight = 8;
inline constexpr int sheetRowHeight = 5;
inline constexpr int sheetRowGap = 6;

// Buttons.
inline constexpr int buttonHeight = 28;
inline constexpr int buttonPadding = 11;
inline constexpr int roundButton = 32;
inline constexpr int iconSize = 16;
inline constexpr int focusRing = focusRingWeight;
inline constexpr int focusGap = 2;

// The composer.
inline constexpr int composerPadding = 12;
inline constexpr int composerTextInset = 4;
inline constexpr int composerGap = 10;
inline constexpr int composerBottom = 18;
inline constexpr int shadowReach = 14;
inline constexpr int shadowDrop = 3;
inline constexpr int chipPadding = 12;
inline constexpr int chipGap = 8;
inline constexpr auto chipGlide = 180ms;
/// The names of attached files, there and over a message.
inline constexpr int attachmentPaddingX = 8;
inline constexpr int attachmentPaddingY = 4;
inline constexpr int attachmentSymbolGap = 6;
inline constexpr int attachmentGap = 6;
inline constexpr int attachmentWidest = 240;
inline constexpr int attachmentsMaximumHeight = 92;

// The empty chat.
inline constexpr int suggestionWidth = 314;
inline constexpr int suggestionMinimumWidth = 140;
inline constexpr int suggestionPadding = 13;
inline constexpr int suggestionGap = 12;

// Notices.
inline constexpr int noticeTextMaximumHeight = 132;
/// Where less is left beside the buttons, they stand below.
inline constexpr int noticeTextMinimumWidth = 240;
inline constexpr int toastMaximumWidth = 560;
inline constexpr int toastPaddingX = 16;
inline constexpr int toastPaddingY = 9;
inline constexpr auto toastTime = 2600ms;
inline constexpr auto toastFade = 180ms;

// The lamp of the engine.
inline constexpr int lamp = 9;
inline constexpr int lampHalo = 15;
inline constexpr int lampArea = 24;
inline constexpr auto lampPulse = 1400ms;

// The onboarding screen.
inline constexpr int applicationIcon = 112;
inline constexpr int onboardingTextWidth = 520;
inline constexpr int onboardingTextHeight = 132;
inline constexpr int onboardingRoom = 212;
inline constexpr auto wordmarkShine = 2200ms;
inline constexpr int progressWidth = 380;
inline constexpr int progressHeight = 6;
inline constexpr auto progressGlide = 180ms;
inline constexpr int spinner = 22;
inline constexpr int spinnerWeight = 2;
inline constexpr auto spinnerTurn = 1000ms;

// The sidebar, and what stands beside it.
inline constexpr int sidebarWidth = 248;
inline constexpr int sidebarMinimumWidth = 200;
inline constexpr int sidebarMaximumWidth = 360;
inline constexpr int chatMinimumWidth = 380;
inline constexpr int edgeStep = 16; ///< of a press of an arrow key
inline constexpr int wideButtonHeight = 32;
inline constexpr int chatRowHeight = 32;
inline constexpr int chatRowGap = 1;
inline constexpr int chatRowPadding = 10;
/// At the end of a chat whose reply is being written.
inline constexpr int answeringDot = 7;
inline constexpr auto titleFade = 200ms;
/// The spring that moves the marker: how stiff, how damped, and when it has come to rest.
inline constexpr auto markerResponse = 300ms;
inline constexpr double markerDamping = 0.8;
inline constexpr auto markerRest = 450ms;

// The panel beside the chat.
inline constexpr int inspectorMinimumWidth = 320;
inline constexpr int inspectorIdealWidth = 900;
inline constexpr int inspectorMaximumWidth = 1400;
inline constexpr auto inspectorGlide = 260ms;

// Switches.
inline constexpr int switchWidth = 36;
inline constexpr int switchHeight = 20;
inline constexpr int switchThumb = 16;
inline constexpr int switchCheck = 10;
inline constexpr auto switchGlide = 160ms;

// Sheets.
inline constexpr int sheetWidth = 440;
inline constexpr int sheetPadding = 24;
inline constexpr int fieldHeight = 36;
inline constexpr int fieldPadding = 10;
inline constexpr auto sheetFade = 160ms;

// The settings window.
inline constexpr int settingsWidth = 780;
inline constexpr int settingsHeight = 560;
inline constexpr int paneListWidth = 184;
inline constexpr int paneRowHeight = 32;
inline constexpr int panePadding = 24;
inline constexpr int formPadding = 16;
/// What a form leaves to a row.
inline constexpr int formWidth = settingsWidth - paneListWidth - 2 * panePadding - 2 * formPadding;
inline constexpr int memoryEditorHeight = 220;
inline constexpr int segmentPadding = 12;
inline constexpr int segmentInset = 2;
inline constexpr int swatchWidth = 28;
inline constexpr int swatchHeight = 20;
inline constexpr int swatchRadius = 4;
inline constexpr int swatchDot = 6;
inline constexpr int swatchGap = 3;

// The further windows.
inline constexpr int quietSymbol = 40;
inline constexpr int schedulesWidth = 640;
inline constexpr int schedulesHeight = 520;
inline constexpr int schedulesMinimumWidth = 520;
inline constexpr int schedulesMinimumHeight = 420;
inline constexpr int scheduleRowPadding = 14;
inline constexpr int scheduleEditorWidth = 460;
inline constexpr int promptEditorHeight = 96;
/// What a date or a time leaves to its arrows, where their middle is from the edge, and how far apart they
/// are.
inline constexpr int dateArrows = 32;
inline constexpr int dateArrow = 13;
inline constexpr int dateArrowsApart = 5;
inline constexpr int weekdayButton = 36;
inline constexpr int pagesMinimumWidth = 360;
inline constexpr int pagesMinimumHeight = 420;
inline constexpr int pagesWidth = 900;
inline constexpr int pagesHeight = 640;
inline constexpr int pageListWidth = 240;
inline constexpr int pageListMinimumWidth = 200;
inline constexpr int pageRowPaddingY = 7;
inline constexpr int pageRowLineGap = 2;

// Pages: the paper in the panel and in the window, and in files saved from there.
inline constexpr int panelMinimumWidth = 240;
inline constexpr int panelPaperWidth = 720;
inline constexpr int panelExportWidth = 640;
inline constexpr int listPaperWidth = 760;
inline constexpr int listExportWidth = 680;
inline constexpr int paperMargin = 16;
inline constexpr int pageBarPadding = 10;

// The typing indicator.
inline constexpr int typingDot = 7;
inline constexpr int typingGap = 5;
inline constexpr int typingDots = 3;
inline constexpr double typingSmallest = 0.5;
inline constexpr auto typingSwell = 500ms;
inline constexpr auto typingDelay = 160ms;
inline constexpr auto typingAccentStay = 2000ms;
inline constexpr auto typingAccentFade = 450ms;

// Scrolling.
inline constexpr int scrollBar = 10;
inline constexpr int scrollHandle = 6;
inline constexpr int scrollHandleShortest = 32;
inline constexpr auto scrollGlide = 160ms;

// A chat that is opened: how far below its place it sets out, and the spring that draws it there.
inline constexpr int arrivalWay = 14;
inline constexpr auto arrivalResponse = 350ms;
inline constexpr double arrivalDamping = 0.85;
inline constexpr auto arrivalRest = 500ms;

/// How long a picture of something in motion stands.
inline constexpr auto frame = 33ms;

} // namespace style
