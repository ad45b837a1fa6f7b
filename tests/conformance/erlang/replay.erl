%% SPDX-License-Identifier: LicenseRef-SnmpSubAgent
%%
%% Runs test functions of Erlang's snmp_agent_SUITE against a master agent, and
%% says of each of their expectations whether it was met:
%%
%%   replay:main(["PORT", "v1" | "v2", "MIB-FOLDER", "FUNCTION"...])
%%
%% prints lines such as "ok v2_get_p 3934" and "not ok v2_set_p 4061 expected
%% noCreation, got ...". The number is the line in the suite. An expectation that
%% is not met does not end the function: run-erlang has the suite's library call
%% note/3 instead.
-module(replay).
-export([main/1, note/3]).

main([Port, Version, Folder | Functions]) ->
    Mibs = [filename:rootname(F) || F <- filelib:wildcard(Folder ++ "/*.bin"),
                                    filename:basename(F) =/= "RFC1213-MIB.bin"],
    Options = [{agent, {127, 0, 0, 1}}, {agent_udp, list_to_integer(Port)},
               {trap_udp, 0}, {recbuf, 65535}, quiet, list_to_atom(Version),
               {community, "public"}, {mibs, Mibs}],
    {module, _} = code:ensure_loaded(snmp_agent_SUITE),
    ok = silently(fun() -> snmp_test_mgr_counter_server:start() end),
    lists:foreach(fun(F) -> run(list_to_atom(F), Version, Options) end,
                  Functions),
    init:stop().

%% Each function has a manager of its own, to which late responses go.
run(Function, Version, Options) ->
    {ok, _} = silently(fun() -> snmp_test_mgr:start_link(Options) end),
    put(vsn, list_to_atom(Version)),
    put(mip, [127, 0, 0, 1]),
    put(function, Function),
    case silently(fun() -> catch call(Function) end) of
        {'EXIT', Reason} ->
            say("not ok ~w ended with ~0p~n", [Function, Reason]);
        _ -> ok
    end,
    silently(fun() -> snmp_test_mgr:stop() end),
    flush().

%% Some take the agent's process, of which there is none.
call(Function) ->
    case erlang:function_exported(snmp_agent_SUITE, Function, 0) of
        true -> snmp_agent_SUITE:Function();
        false -> snmp_agent_SUITE:Function(self())
    end.

note(snmp_agent_SUITE, Line, ok) ->
    say("ok ~w ~w~n", [get(function), Line]);
note(snmp_agent_SUITE, Line, Reason) ->
    say("not ok ~w ~w ~0p~n", [get(function), Line, Reason]),
    {error, Reason}.

say(Format, Arguments) ->
    io:format(standard_error, Format, Arguments).

%% The suite tells a lot on the standard output.
silently(Work) ->
    Leader = group_leader(),
    Sink = spawn_link(fun sink/0),
    group_leader(Sink, self()),
    Result = Work(),
    group_leader(Leader, self()),
    Result.

sink() ->
    receive
        {io_request, From, Ref, _} -> From ! {io_reply, Ref, ok};
        _ -> ok
    end,
    sink().

flush() ->
    receive _ -> flush() after 0 -> ok end.
