-- expect source: {20, {"Insufficient funds for Zed", 1001}}
on newAccount(owner, start)
	script Account
		property balance : start
		property holder : owner
		on deposit(n)
			set my balance to (my balance) + n
			return me
		end deposit
		on withdraw(n)
			if n > balance then error "Insufficient funds for " & holder number 1001
			set balance to balance - n
			return me
		end withdraw
	end script
	return Account
end newAccount
set acc to newAccount("Zed", 10)
acc's deposit(5)
tell acc to deposit(5)
try
	acc's withdraw(100)
on error m number n
	set e to {m, n}
end try
{balance of acc, e}
