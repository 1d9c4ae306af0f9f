// What the JScript tests share; the runner puts it in front of each. Sources are ASCII: script hosts read them in the
// machine's code page. Other characters come from texts.txt, by T("name").
//
// A row says what must come of a call:
//   gives(2, function () { return validate.GetByte_Pf("ab", 0); }, "a column each");
var files = new ActiveXObject("Scripting.FileSystemObject");
var results = files.CreateTextFile(WScript.Arguments(1), true, true);
var known = {};
var checked = 0;
var failed = 0;
readTexts(WScript.Arguments(0));

var validate = new ActiveXObject("Corvelle.ClsValidate");
var application = new ActiveXObject("Corvelle.ClsVexApp");

function readTexts(path) {
  var file = files.OpenTextFile(path, 1, false, -1);
  while (!file.AtEndOfStream) {
    var line = file.ReadLine();
    var mark = line.indexOf("=");
    known[line.substring(0, mark)] = line.substring(mark + 1);
  }
  file.Close();
}

function T(name) {
  if (known[name] === undefined) WScript.Quit(3);
  return known[name];
}

function repeated(character, count) {
  var text = "";
  while (text.length < count) text += text.length == 0 || 2 * text.length > count ? character : text;
  return text;
}

// Windows gives automation's own errors the script language's numbers, Wine passes them on.
var languageNumbers = { 0x80020005: 13, 0x80020006: 438, 0x8002000E: 450 };

// What a call came to: {value} or {number, message}.
function outcome(call) {
  try {
    return { value: call() };
  } catch (error) {
    var number = error.number >>> 0;
    return { number: languageNumbers[number] || (number & 0xFFFF), message: error.message };
  }
}

// The call succeeds with exactly this value, of this type.
function gives(expected, call, reason) {
  var came = outcome(call);
  report(came.number === undefined && came.value === expected, reason, came);
}

// The operation itself fails; its description names the operation and the argument.
function fails(number, operation, argument, call, reason) {
  var came = outcome(call);
  var named = came.message !== undefined && came.message.indexOf(operation) >= 0 && came.message.indexOf(argument) >= 0;
  report(came.number === number && named, reason + " (" + came.message + ")", came);
}

// Automation's own error: the operation did not run.
function refused(number, call, reason) {
  var came = outcome(call);
  report(came.number === number, reason, came);
}

function report(right, reason, came) {
  checked += 1;
  if (!right) failed += 1;
  var got = right ? "" : ": got " + typeof came.value + " " + came.value + ", error " + came.number + ": " + came.message;
  results.WriteLine((right ? "ok    " : "FAIL  ") + reason + got);
}

function finish() {
  results.WriteLine(checked + " checked, " + failed + " failed");
  results.Close();
  WScript.Quit(failed);
}
