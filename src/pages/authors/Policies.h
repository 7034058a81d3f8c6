#pragma once

#include <string>
#include <string_view>

namespace torvex {
class Response;
struct HostContext;

// What the pages of authors may load, run and be framed by. Pages and templates hold scripts of people who may
// do less than their readers; these policies keep such a script away from the readers' rights.

/// The form of the door: files of this server alone, in no frame.
void addDoorPolicy(Response& response);
/// What went wrong: no script; it may stand in the shell's frame.
void addNoticePolicy(Response& response);
/// The same with a form that asks whether something is meant: in no frame, where it could be clicked unseen.
void addConsentPolicy(Response& response);
/// The shell: scripts of this server, styles too; only the view of a page may stand in its frames.
/// `nonce` allows the styles that its editor of sources puts in. No text becomes HTML or a script but by the
/// libraries that the policy names.
void addShellPolicy(HostContext& host, std::string_view nonce);
/// A page that is edited: of this origin, so that the shell can work in it, and running nothing.
void addEditPolicy(Response& response);
/// A page that is tried: its scripts run in an origin of its own, without cookies and without the shell.
void addTryPolicy(Response& response);

}  // namespace torvex
